#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <vector>

#include "modules/ITradeModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "support/ScriptedHostTest.h"
#include "vip_base_service.pb.h"

/// A trade module that gives the answer of the test and records the queries.
class CFakeTradeModule : public ITradeModuleUtil {
public:
    bool QueryTradeStatus(int query) override {
        asked.push_back(query);
        return answer;
    }

    bool answer = false;
    std::vector<int> asked;
};

/// Gives the trade module while there is one.
class CFakeTradeFactory : public IZRPluginInterfaceFactory {
public:
    std::string GetInterfaceName() override { return "16ITradeModuleUtil"; }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override { return module; }

    std::shared_ptr<CFakeTradeModule> module = std::make_shared<CFakeTradeModule>();
};

/// Puts a trade module behind the plug-in centre, for the rest of the process.
inline std::shared_ptr<CFakeTradeFactory> RegisterTradeModule() {
    auto factory = std::make_shared<CFakeTradeFactory>();
    IZRPluginCenter::RegisterInterfaceFactory(factory, false);
    return factory;
}

/// A member of the newer system, for whom every field is something else than its default.
inline vip_base_service::GetAppEntryMessageRsp FullAnswer() {
    vip_base_service::GetAppEntryMessageRsp answer;
    answer.mutable_data()->set_has_vip_qualification(true);
    vip_base_service::VipBasicData* basic = answer.mutable_data()->mutable_vip_basic_data();
    basic->set_vip_level(3);
    basic->set_vip_state(1);
    basic->set_vip_version(1);
    basic->set_new_vip_state(1);
    basic->set_new_vip_sub_state(103);
    basic->set_auto_renewal(1);
    return answer;
}
