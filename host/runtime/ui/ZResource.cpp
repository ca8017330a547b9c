#include "ui/ZResource.h"

#define ZR_RESOURCE(name) const ZResource::Name ZResource::name(#name)

// A macro writes each name once, so that constant and value can't differ.
ZR_RESOURCE(icon_premium_crown_16);
ZR_RESOURCE(icon_premium_tag_normal);
ZR_RESOURCE(icon_close_16);
ZR_RESOURCE(icon_close_32_normal);
ZR_RESOURCE(btn_flyouts_pin_12);
ZR_RESOURCE(icon_pushpin_f_12);
ZR_RESOURCE(icon_base_person_vip_16);
ZR_RESOURCE(icon_blackvip_16_normal);
ZR_RESOURCE(icon_vip_16_normal);
ZR_RESOURCE(icon_viptab_normal);
ZR_RESOURCE(icon_engine_16);
ZR_RESOURCE(icon_engine_36x16_normal);
ZR_RESOURCE(img_vip_16_normal);
ZR_RESOURCE(img_engine_m_56x16_normal);
ZR_RESOURCE(img_engine_nbg_54x16_normal);
ZR_RESOURCE(img_bg_engine_banner_230x32_normal);
ZR_RESOURCE(img_bg_noengine_banner_230x32_normal);
ZR_RESOURCE(img_viptab1_26x16_normal);
ZR_RESOURCE(img_viptab2_26x16_normal);
ZR_RESOURCE(img_viptab3_26x16_normal);
ZR_RESOURCE(img_viptabcn_45x16_normal);
ZR_RESOURCE(img_viptaben_76x16_normal);
ZR_RESOURCE(img_viptabhk_45x16_normal);
ZR_RESOURCE(img_viptabjp_71x16_normal);
