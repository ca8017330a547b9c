// Destructors and type information of classes used on both sides exist only in this library.
#include "modules/IGrowthPremiumWidget.h"
#include "modules/IGrowthVipBaseWidget.h"
#include "modules/IMainFrameModuleUtil.h"
#include "modules/ITradeModuleUtil.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginInterface.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"

IGrowthPremiumWidget::IGrowthPremiumWidget(QWidget* parent) : QWidget(parent) {}

IGrowthPremiumWidget::~IGrowthPremiumWidget() = default;

IGrowthVipBaseWidget::IGrowthVipBaseWidget(QWidget* parent) : QWidget(parent) {}

IGrowthVipBaseWidget::~IGrowthVipBaseWidget() = default;

IMainFrameModuleUtil::~IMainFrameModuleUtil() = default;

ITradeModuleUtil::~ITradeModuleUtil() = default;

IZRGrowthModuleInterface::~IZRGrowthModuleInterface() = default;

IZRPluginInterface::~IZRPluginInterface() = default;

bool IZRPluginInterface::SupportMultiThread() {
    return false;
}

IZRPluginInterfaceFactory::~IZRPluginInterfaceFactory() = default;

ZRPluginEventParam::~ZRPluginEventParam() = default;

IZRPluginModule::~IZRPluginModule() = default;

std::shared_ptr<IZRPluginInterface> IZRPluginModule::CreateInterface(const ZRPluginIID& /*iid*/) {
    return nullptr;
}

void IZRPluginModule::OnEvent(EnZRPluginEvent /*event*/, std::shared_ptr<ZRPluginEventParam> /*param*/) {}
