#include "AIChat/Controller/ZRAIChatManager.h"

#include "AIChat/Controller/ZRAIChatIds.h"
#include "AIChat/View/ZRAIChatWebDialog.h"
#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"
#include "ZRGrowthSingleton.h"
#include "chat.pb.h"
#include "core/config_common.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "core/message_ids.h"
#include "core/pb_helper.h"
#include "core/post.h"
#include "core/report.h"
#include "core/url.h"
#include "framework/assertion.h"
#include "framework/defensive.h"
#include "modules/ZRGrowthMessages.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::AIChat;
constexpr const char* kAIChatEnableCacheDataKey = "ZRBaseAIChatEnableCacheDataKey";
constexpr const char* kPageConfig = "ai_chat";
constexpr int kReportCodeClick = 5;
constexpr double kTransparent = 0.001;

// Returns the value of "entrance_source" in the click report. Null for a scene that reports do not know.
const char* EntranceSource(ZRAIChatPageScene scene) {
    switch (scene) {
        case ZRAIChatPageWatchlist:
            return "3";
        case ZRAIChatPageNews:
            return "4";
        case ZRAIChatPagePortfolio:
            return "5";
        case ZRAIChatPageQuotes:
            return "12";
        case ZRAIChatPageResearch:
            return "42";
    }
    return nullptr;
}

}  // namespace

CZRAIChatManager* CZRAIChatManager::Singleton() {
    static growth::CStartedManager<CZRAIChatManager> manager;
    return manager.Get();
}

CZRAIChatManager::CZRAIChatManager() = default;

CZRAIChatManager::~CZRAIChatManager() = default;

void CZRAIChatManager::Init() {
    GetPageUrlFromCommonConfig();
    ReadAIChatEnableCacheData();
    Bind(core::kMsgLanguageChanged, &CZRAIChatManager::OnLanguageChanged);
    Bind(core::kMsgThemeChanged, &CZRAIChatManager::OnThemeChanged);
    Bind(core::kMsgCommonConfigChanged, &CZRAIChatManager::OnCommonConfigChanged);
    core::scheme::RegisterPreCallback(
        QString::fromLatin1(kstrAIChatSchemeUrl),
        [this](QObject* from, const core::scheme::SchemeInfo& scheme, QVariant extra) {
            return OnHandleScheme(from, scheme, std::move(extra));
        },
        this, core::scheme::kFirstWordEquals);
}

void CZRAIChatManager::Bind(unsigned int message,
                            void (CZRAIChatManager::*slot)(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>)) {
    core::__CMessageDispatch(GROWTH_HERE)
        .Bind(
            message,
            [this, slot](unsigned int id, unsigned long param, std::shared_ptr<core::CMessageBody> body) {
                (this->*slot)(id, param, std::move(body));
            },
            this);
}

// The hook of the scheme stays.
void CZRAIChatManager::UnInit() {
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
}

void CZRAIChatManager::OnLogin() {
    LogInfo("OnLogin, preload AI chat web page");
    ReadAIChatEnableCacheData();
    RequestAIChatEnableStatus();
    OpenAIChatPage(ZRAIChatPageWatchlist, {}, false, true, true, QString());
}

// Closes the page only: the last user's scenes answer until the next login.
void CZRAIChatManager::OnLogout() {
    CloseAIChatPage();
}

void CZRAIChatManager::RequestAIChatEnableStatus() {
    const chat::GetChatEntryReq request;
    CSProtoData data;
    data.m_nCmd = kCmdAIChatEnableStatus;
    core::pb_helper::PBDataToBuf(&request, data.m_strData);
    const auto callback = [this](unsigned long session, CSProtoError error, const CSProtoData& reply,
                                 const CSResponseExt* ext) {
        OnRequestAIChatEnableStatusCallback(session, error, reply, ext);
    };
    IZRChannelProxy::SendCommand(kCSChannelMain, data, nullptr, callback, this);
}

void CZRAIChatManager::OnRequestAIChatEnableStatusCallback(qulonglong /*nReqKey*/, CSProtoError enError,
                                                           CSProtoData stRspData, const CSResponseExt* /*pRspExt*/) {
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdAIChatEnableStatus) {
        LogInfo("RequestAIChatEnableStatus callback, receive cmd error, error = {}, cmd = {}", int(enError),
                stRspData.m_nCmd);
        return;
    }
    LogInfo("RequestAIChatEnableStatus callback, stRspData.m_strData = {}", stRspData.m_strData);
    chat::GetChatEntryRsp response;
    if (!response.ParseFromString(stRspData.m_strData)) {
        // The number in this text is not the command's. It is intended, since logs are searched for it.
        LogInfo("RequestAIChatEnableStatus callback, receive cmd 20832, data parse failed");
        return;
    }
    // The result code is ignored: each answer that can be parsed is used.
    m_jsonEnabledScenes = Json::Value(Json::arrayValue);
    for (const chat::ChatEntry& entry : response.data().entry_list()) {
        LogInfo("RequestAIChatEnableStatus success, scene = {}, is_all_open = {}", entry.scene(), entry.is_all_open());
        if (entry.is_all_open()) {
            m_jsonEnabledScenes.append(Json::UInt(entry.scene()));
        }
    }
    core::__CMessageDispatch(GROWTH_HERE).Send(kMsgAIChatEnableChanged, nullptr, true);
    SaveAIChatEnableCacheData();
}

void CZRAIChatManager::SaveAIChatEnableCacheData() {
    const std::string aiChatEnableDataStr = m_jsonEnabledScenes.toStyledString();
    const std::string key = GenerateAIChatEnableCacheDataKey().toStdString();
    if (!core::config_local::AppCfgSaveString(key, aiChatEnableDataStr)) {
        LogInfo("Update cache failed, aiChatEnableDataStr = {}", aiChatEnableDataStr);
    }
}

bool CZRAIChatManager::IsAIChatEnable(ZRAIChatEntryScene scene) {
    if (m_nDevelopEnableType != 0) {
        return m_nDevelopEnableType == 1;
    }
    bool enable = false;
    for (const Json::Value& element : m_jsonEnabledScenes) {
        // For the library a scene beyond the signed range is no int, so it never matches.
        if (element.isInt() && element.asInt() == scene) {
            enable = true;
            break;
        }
    }
    LogInfo("Is AI chat enable, entryScene = {}, enable = {}", int(scene), enable);
    return enable;
}

void CZRAIChatManager::SetAIChatDevelopEnableType(unsigned int type) {
    m_nDevelopEnableType = type;
    core::__CMessageDispatch(GROWTH_HERE).Send(kMsgAIChatEnableChanged, nullptr, true);
}

QString CZRAIChatManager::GenerateAIChatEnableCacheDataKey() {
    return QString::fromStdString(
        fmt::format(FMT_STRING("{}_{}"), kAIChatEnableCacheDataKey, core::login_status_data::Login_GetUserID()));
}

void CZRAIChatManager::ReadAIChatEnableCacheData() {
    const Json::Value emptyList(Json::arrayValue);
    std::string cached;
    std::string error;
    if (!core::config_local::AppCfgReadString(GenerateAIChatEnableCacheDataKey().toStdString(), cached)) {
        LogInfo("Read cache failed");
    } else if (!growth_json::Parse(cached, m_jsonEnabledScenes, error)) {
        LogInfo("Parse cache failed, error = {}", error);
    }
    // Intended: the cache is written and checked but never used. Scenes come only from the server.
    m_jsonEnabledScenes = emptyList;
}

void CZRAIChatManager::GetPageUrlFromCommonConfig() {
    const Json::Value config = core::config_common::GetJsonConfigByName(kPageConfig);
    const QString page = growth_json::Text(growth_json::Member(config, "url_string"));
    if (page.isEmpty()) {
        m_strPageUrl = QString::fromLatin1(kAIChatWebPageUrl);
        LogInfo("Get AI chat url from local, url = {}", m_strPageUrl.toStdString());
    } else {
        m_strPageUrl = page;
        LogInfo("Get AI chat url from common config, url = {}", m_strPageUrl.toStdString());
    }
    const QString preload = growth_json::Text(growth_json::Member(config, "preload_url_string"));
    if (preload.isEmpty()) {
        m_strPreloadUrl = QString::fromLatin1(kAIChatWebPagePreloadUrl);
        LogInfo("Get AI chat preload url from local, url = {}", m_strPreloadUrl.toStdString());
    } else {
        m_strPreloadUrl = preload;
        LogInfo("Get AI chat preload url from common config, url = {}", m_strPreloadUrl.toStdString());
    }
}

// Pairs without a key or value are left out. On purpose nothing is escaped.
QString CZRAIChatManager::GenerateCustomParameters(const QMap<QString, QString>& params) {
    std::string text;
    for (auto pair = params.begin(); pair != params.end(); ++pair) {
        if (!pair.key().isEmpty() && !pair.value().isEmpty()) {
            text += fmt::format(FMT_STRING("&{}={}"), pair.key().toStdString(), pair.value().toStdString());
        }
    }
    return QString::fromStdString(text);
}

void CZRAIChatManager::ReportClickEntryScene(ZRAIChatPageScene pageScene) {
    const char* source = EntranceSource(pageScene);
    if (!source) {
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__,
                                      "false");
        return;
    }
    Json::Value params(Json::objectValue);
    params["entrance_source"] = source;
    core::report::Report("ClickAIChatEntrance", kReportCodeClick, params, 0);
}

void CZRAIChatManager::OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params,
                                      bool needChangeSessionId, bool showPage, bool isPreload, const QString& url) {
    if (!isPreload) {
        ReportClickEntryScene(pageScene);
    }
    const OpenRequest request{pageScene, params, needChangeSessionId, showPage, isPreload, url};
    core::post::ToMain(
        this, [this, request] { OpenOnMainThread(request); }, nullptr);
}

void CZRAIChatManager::OpenOnMainThread(const OpenRequest& request) {
    bool mustLoad = false;
    if (m_bLastLoadIsPreload && m_pWebDialog) {
        LogInfo("Last load is preload, clear web data");
        m_pWebDialog->Clear();
        mustLoad = true;
    }
    m_bLastLoadIsPreload = request.isPreload;
    const QString customParameters = GenerateCustomParameters(request.params);
    if (!m_pWebDialog) {
        if (!request.showPage) {
            return;
        }
        CreateDialog();
        mustLoad = true;
    }
    bool needChangeSessionId = request.needChangeSessionId;
    if (NeedsLoad(request, customParameters, mustLoad, needChangeSessionId)) {
        LoadPage(request, customParameters, needChangeSessionId);
    }
    if (!m_pWebDialog) {
        return;
    }
    if (request.isPreload) {
        m_pWebDialog->setWindowOpacity(kTransparent);
    } else if (request.showPage) {
        m_pWebDialog->setWindowOpacity(1.0);
        m_pWebDialog->Show();
    }
}

void CZRAIChatManager::CreateDialog() {
    LogInfo("Create AI chat web dialog");
    m_pWebDialog = new CZRAIChatWebDialog(nullptr);
    m_pWebDialog->setAttribute(Qt::WA_DeleteOnClose);
    CZRAIChatWebDialog* dialog = m_pWebDialog;
    FrameWork::ConnectChecked(kGrowthModuleTag, dialog, &CZRAIChatWebDialog::HiddenButNotClosed, this,
                              &CZRAIChatManager::OnWebDialogHiddenButNotClosed);
    FrameWork::ConnectChecked(kGrowthModuleTag, dialog, &CZRAIChatWebDialog::LoadEnd, this,
                              &CZRAIChatManager::OnLoadEnd);
    RegisterExtendJSAPIToDialog();
}

// Compares with the last load, and announces another scene. The same page needs no other session.
bool CZRAIChatManager::NeedsLoad(const OpenRequest& request, const QString& customParameters, bool mustLoad,
                                 bool& needChangeSessionId) {
    if (request.pageScene != m_enPageScene) {
        const auto body = std::make_shared<core::CMessageBody>();
        body->set_p1(uint64_t(m_enPageScene));
        body->set_p2(uint64_t(request.pageScene));
        core::__CMessageDispatch(GROWTH_HERE).Send(kMsgAIChatPageSceneChanged, body, true);
        m_enPageScene = request.pageScene;
        return true;
    }
    if (customParameters != m_strCustomParameters) {
        return true;
    }
    needChangeSessionId = false;
    return m_bHiddenButNotClosed || !request.url.isEmpty() || mustLoad;
}

void CZRAIChatManager::LoadPage(const OpenRequest& request, const QString& customParameters, bool needChangeSessionId) {
    const uint64_t user = core::login_status_data::Login_GetUserID();
    const char* session = user != m_nLastLoadUserId || needChangeSessionId ? "1" : "0";
    const QString ownUrl = request.isPreload ? m_strPreloadUrl : m_strPageUrl;
    const QString base = request.url.isEmpty() ? ownUrl : request.url;
    // Also behind a query: the pages expect it.
    const std::string url = fmt::format(FMT_STRING("{}?needChangeSessionId={}&scene={}{}"), base.toStdString(), session,
                                        int(request.pageScene), customParameters.toStdString());
    m_strCustomParameters = customParameters;
    m_nLastLoadUserId = user;
    LogInfo("Load AI chat page start, pageScene = {}, isPreload = {}, hiddenButNotClosed = {}, url = {}",
            int(request.pageScene), request.isPreload, m_bHiddenButNotClosed, url);
    m_bHiddenButNotClosed = false;
    if (m_pWebDialog) {
        m_pWebDialog->LoadUrl(QString::fromStdString(url));
    }
}

// A preloaded page is emptied. The next open loads the page itself.
void CZRAIChatManager::OnLoadEnd() {
    if (m_bLastLoadIsPreload && m_pWebDialog) {
        m_pWebDialog->Hide();
    }
}

void CZRAIChatManager::OnWebDialogHiddenButNotClosed() {
    m_bHiddenButNotClosed = true;
    core::__CMessageDispatch(GROWTH_HERE).Send(kMsgAIChatHiddenButNotClosed, nullptr, true);
}

// Not close(), which the window refuses. The state of the last load stays.
void CZRAIChatManager::CloseAIChatPage() {
    if (!m_pWebDialog) {
        return;
    }
    m_pWebDialog->hide();
    m_pWebDialog->deleteLater();
    m_pWebDialog.clear();
}

void CZRAIChatManager::OnLanguageChanged(uint32_t uMsg, qulonglong /*wParam*/,
                                         std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    if (uMsg == core::kMsgLanguageChanged) {
        CloseAIChatPage();
    }
}

// A visible window stays, since somebody reads it. A hidden one is created again in the new theme.
void CZRAIChatManager::OnThemeChanged(uint32_t uMsg, qulonglong /*wParam*/,
                                      std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    if (uMsg == core::kMsgThemeChanged && m_pWebDialog && m_pWebDialog->isHidden()) {
        CloseAIChatPage();
    }
}

void CZRAIChatManager::OnCommonConfigChanged(uint32_t uMsg, qulonglong /*wParam*/,
                                             std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    if (uMsg == core::kMsgCommonConfigChanged) {
        GetPageUrlFromCommonConfig();
    }
}

bool CZRAIChatManager::OnHandleScheme(QObject* /*objFrom*/, const core::scheme::SchemeInfo& stScheme,
                                      QVariant /*varExtMsg*/) {
    const QString firstWord = stScheme.pathWords.value(0);
    if (firstWord.isEmpty() || firstWord != QLatin1String(kstrAIChatSchemeUrl)) {
        return false;
    }
    const QString host = QString::fromStdString(core::url::GetHost(m_strPageUrl.toStdString()));
    LogInfo("Handle scheme, scheme = {}; webPageUrl = {}, host = {}", stScheme.text.toStdString(),
            m_strPageUrl.toStdString(), host.toStdString());
    // Every text contains an empty host, which a bad configuration leads to.
    if (host.isEmpty() || !stScheme.text.contains(host)) {
        return false;
    }
    // Only the form with the address as the second word is served, on purpose.
    if (stScheme.keys.contains(QStringLiteral("url")) || stScheme.pathWords.size() != 2 ||
        stScheme.pathWords.at(1).isEmpty()) {
        return false;
    }
    const QString target = QString::fromStdString(core::url::Decode(stScheme.pathWords.at(1).toStdString()));
    OpenAIChatPage(ZRAIChatPageWatchlist, {}, true, true, false, target);
    return true;
}

bool CZRAIChatManager::InvokeWebJSAPI(const QString& name, const Json::Value& params) {
    return m_pWebDialog && m_pWebDialog->InvokeJSAPI(name, params);
}

void CZRAIChatManager::RespondToNativeJSAPI(const QString& name, const Json::Value& value) {
    if (m_pWebDialog) {
        m_pWebDialog->RespondToExtendJSAPI(name, value);
    }
}

bool CZRAIChatManager::RegisterNativeJSAPI(const QString& name, const JSAPIHandler& handler) {
    if (name.isEmpty() || !handler) {
        LogInfo("Register AI chat JSAPI failed, handlerName = {}", name.toStdString());
        return false;
    }
    if (CZRAIChatWebDialog::IsReservedJSAPIName(name)) {
        LogInfo("AI chat JSAPI name is reserved, handlerName = {}", name.toStdString());
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__,
                                      "false");
        return false;
    }
    if (m_mapExtendJSAPI.contains(name)) {
        LogInfo("Register AI chat JSAPI duplicated, handlerName = {}", name.toStdString());
        return false;
    }
    m_mapExtendJSAPI.insert(name, handler);
    LogInfo("Register AI chat extend JSAPI success, handlerName = {}", name.toStdString());
    return true;
}

void CZRAIChatManager::UnregisterNativeJSAPI(const QString& name) {
    m_mapExtendJSAPI.remove(name);
}

// Runs once for each window: a handler that comes or goes later counts for the next one.
void CZRAIChatManager::RegisterExtendJSAPIToDialog() {
    for (auto entry = m_mapExtendJSAPI.constBegin(); entry != m_mapExtendJSAPI.constEnd(); ++entry) {
        if (entry.value()) {
            m_pWebDialog->RegisterExtendJSAPI(entry.key(), entry.value());
        }
    }
}
