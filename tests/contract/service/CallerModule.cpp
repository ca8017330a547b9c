// A second module in the process of the growth module. It includes only the contract's headers and calls each operation
// of the service.
#include <functional>

#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"
#include "plugin/ZRPluginEntry.h"
#include "ui/ZAction.h"
#include "ui/ZMenu.h"

namespace {

using IService = IZRGrowthModuleInterface;

constexpr auto kRight = EnPremiumAccess_Insider;

/// An operation by its number, and a call that returns the result as text.
struct Operation {
    int number;
    bool forAnyThread;
    std::function<std::string(IService&)> call;
};

std::string Text(bool value) {
    return value ? "true" : "false";
}

std::string Text(const QSize& size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

std::string Text(const QString& text) {
    return "'" + text.toStdString() + "'";
}

/// The class of an object that the caller owns, which ends it.
template <class Object>
std::string Take(Object* object, const QObject* parent) {
    if (!object) {
        return "null";
    }
    const std::string name = object->metaObject()->className();
    const bool isChild = object->parent() == parent;
    delete object;
    return name + (isChild ? "" : " of another parent");
}

CPremiumUIAccessData Record() {
    CPremiumUIAccessData record;
    record.strUIType = QStringLiteral("D");
    record.strMainTitle = QStringLiteral("title");
    record.strMainBtn = QStringLiteral("button");
    record.nMainBtnUrlID = 301;
    record.nDaysLeft = 5;
    record.nActivationType = ZRPremiumActivationNotActivated;
    record.nActivationSource = ZRPremiumSourceVip;
    return record;
}

const QString kName = QStringLiteral("name");
const QString kPage = QStringLiteral("page");

std::vector<Operation> Operations() {
    const auto none = [](auto call) {
        return [call](IService& service) {
            call(service);
            return std::string("done");
        };
    };
    return {
        {1, true, none([](IService& service) {
             service.GetAdBannerAsync(7, {400, 90}, [](QWidget*) {}, 0, false, {});
         })},
        {2, false, none([](IService& service) { service.UpdateAdBottomPopupCoordinates(); })},
        {3, false, [](IService& service) { return Take(service.GetAdBottomPopupDeveloperView(), nullptr); }},
        {4, false, [](IService& service) { return Text(service.GetUiMsgAndPremiumAccessReq(true) != 0); }},
        {5, false,
         [](IService& service) {
             return Text(service.GetUiMsgAndPremiumAccessReq(QVector<int>{1, 2}, true) != 0);
         }},
        {6, false,
         [](IService& service) {
             return Text(service.GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{kRight}, true) != 0);
         }},
        {7, true, [](IService& service) { return Text(service.GetUIData(kRight).strMainTitle); }},
        {8, true, [](IService& service) { return std::to_string(service.GetAccessData(kRight).nDaysLeft); }},
        {9, true, [](IService& service) { return Text(service.GetUIAccessData(kRight).strMainBtn); }},
        {10, true, [](IService& service) { return std::to_string(service.GetUIAccessData().size()); }},
        {11, false, none([](IService& service) { service.SetUIAccessData(kRight, Record()); })},
        {12, false,
         [](IService& service) {
             QWidget parent;
             return Take(service.GetPremiumTimeActivationStateWidget(kName, kName, kName, kName, 5, &parent), &parent);
         }},
        {13, false,
         [](IService& service) {
             ZMenu menu;
             return Take(service.GetPremiumMenuEntryAction(&menu), &menu);
         }},
        {14, false,
         [](IService& service) {
             ZMenu menu;
             return Take(service.GetVipMenuEntryAction(&menu), &menu);
         }},
        {15, false,
         [](IService& service) {
             QWidget parent;
             return Take(service.GetVipTitleBarEntryWidget(&parent, {}), &parent);
         }},
        {16, false, [](IService& service) { return Text(service.HasVipQualification()); }},
        {17, false, [](IService& service) { return std::to_string(service.GetVipGrade()); }},
        {18, false, [](IService& service) { return std::to_string(service.GetVipState()); }},
        {19, false, [](IService& service) { return Text(service.IsNewVipSystem()); }},
        {20, false, [](IService& service) { return std::to_string(service.GetVipEngineStatus()); }},
        {21, false, [](IService& service) { return std::to_string(service.GetNewVipState()); }},
        {22, false, [](IService& service) { return Text(service.IsVipIconEnabled(kRight)); }},
        {23, false,
         [](IService& service) {
             QWidget parent;
             return Take(service.GetVipIcon(kRight, &parent), &parent);
         }},
        {24, false, [](IService& service) { return Text(service.GetVipIconImageName()); }},
        {25, false, [](IService& service) { return Text(service.GetVipIconImageSize()); }},
        {26, false, [](IService& service) { return Text(service.IsVipTagEnabled(kRight)); }},
        {27, false,
         [](IService& service) {
             QWidget parent;
             return Take(service.GetVipTag(kRight, ZRVipTagGrade, kPage, &parent), &parent);
         }},
        {28, false, [](IService& service) { return Text(service.GetVipTagImageName(ZRVipTagGrade)); }},
        {29, false, [](IService& service) { return Text(service.GetVipTagImageSize(ZRVipTagGrade)); }},
        {30, false, [](IService& service) { return Text(service.IsVipBannerEnabled(kRight, ZRVipUIDataMain)); }},
        {31, false,
         [](IService& service) {
             QWidget parent;
             return Take(service.GetVipBanner(kRight, ZRVipUIDataMain, kPage, &parent), &parent);
         }},
        {32, false,
         [](IService& service) { return Text(service.IsVipMaskEnabled(ZRVipMaskLocked, kRight, ZRVipUIDataMain)); }},
        {33, false,
         [](IService& service) {
             QWidget parent;
             return Take(
                 service.GetVipMask(ZRVipMaskExclusive, kRight, ZRVipUIDataMain, kPage, &parent, {}, 20, 14, false),
                 &parent);
         }},
        {34, false, none([](IService& service) { service.HandleVipWidgetClicked(kRight, ZRVipUIDataMain, nullptr); })},
        {35, false, none([](IService& service) { service.OpenVipWebPage(QStringLiteral("https://vip.test/")); })},
        {36, false, [](IService& service) { return Text(service.IsAIChatEnable(ZRAIChatEntryNews)); }},
        {37, true, none([](IService& service) { service.OpenAIChatPage(ZRAIChatPageNews, {}, false, false); })},
        {38, false, [](IService& service) { return Text(service.InvokeAIChatWebJSAPI(kName, Json::Value())); }},
        {39, false,
         [](IService& service) {
             return Text(service.RegisterAIChatNativeJSAPI(
                 kName, [](const Json::Value&, int) -> std::shared_ptr<Json::Value> { return nullptr; }));
         }},
        {40, false, none([](IService& service) { service.RespondToNativeJSAPI(kName, Json::Value()); })},
        {41, false, none([](IService& service) { service.UnregisterAIChatNativeJSAPI(kName); })},
        {42, false, none([](IService& service) { service.SetAIChatDevelopEnableType(0); })},
    };
}

class CCallerModule : public IZRPluginModule {
public:
    std::string GetSymbolName() override { return "caller"; }
    void OnInit() override {}
    void OnUnInit() override {}
    void OnLogin() override {}
    void OnLogout() override {}
};

}  // namespace

ZR_PLUGIN_ENTRY(CCaller) {
    return IZRPluginCenter::RegisterModule(std::make_shared<CCallerModule>());
}

/// Calls each operation, or those for any thread, and returns a line for each: number and result.
extern "C" __attribute__((visibility("default"))) void CallService(bool forAnyThread, std::vector<std::string>* lines) {
    const auto service = IZRPluginCenter::CreateInterface<IService>();
    for (const Operation& operation : Operations()) {
        if (!forAnyThread || operation.forAnyThread) {
            lines->push_back(std::to_string(operation.number) + " " + operation.call(*service));
        }
    }
}
