#pragma once

#include <QString>

#include "framework/export.h"

/// The names of the host's icons and images. A name is a constant that converts to text.
struct ZRHOST_API ZResource {
    class Name {
    public:
        /// Ownership: the text is not copied; pass a literal.
        explicit constexpr Name(const char* text) : m_pText(text) {}
        /// Returns the name, in ASCII, as a text that exists until the process ends.
        operator const char*() const { return m_pText; }  // NOLINT(google-explicit-constructor)
        /// Returns a copy of the name.
        operator QString() const { return QString::fromLatin1(m_pText); }  // NOLINT(google-explicit-constructor)

    private:
        const char* m_pText;
    };

    /// The class only groups the names.
    ZResource() = delete;

    // Icons have one colour, which the widget chooses.
    /// Icons of rights.
    static const Name icon_premium_crown_16;
    static const Name icon_premium_tag_normal;
    /// Icons of windows: close, pinned, not pinned.
    static const Name icon_close_16;
    static const Name icon_close_32_normal;
    static const Name btn_flyouts_pin_12;
    static const Name icon_pushpin_f_12;
    /// Icons of the membership: user menu, older system, newer system (engine).
    static const Name icon_base_person_vip_16;
    static const Name icon_blackvip_16_normal;
    static const Name icon_vip_16_normal;
    static const Name icon_viptab_normal;
    static const Name icon_engine_16;
    static const Name icon_engine_36x16_normal;

    // Images have colours of their own, and a variant for each theme where necessary.
    /// Marks of the membership, older and newer system.
    static const Name img_vip_16_normal;
    static const Name img_engine_m_56x16_normal;
    static const Name img_engine_nbg_54x16_normal;
    /// Backgrounds of the menu entry, for members and other users.
    static const Name img_bg_engine_banner_230x32_normal;
    static const Name img_bg_noengine_banner_230x32_normal;
    /// Tags of the older system: by grade, then by display language.
    static const Name img_viptab1_26x16_normal;
    static const Name img_viptab2_26x16_normal;
    static const Name img_viptab3_26x16_normal;
    static const Name img_viptabcn_45x16_normal;
    static const Name img_viptaben_76x16_normal;
    static const Name img_viptabhk_45x16_normal;
    static const Name img_viptabjp_71x16_normal;
};
