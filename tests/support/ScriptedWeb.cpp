#include "support/ScriptedWeb.h"

#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>

#include "webview/WebAddress.h"

namespace {

std::string Compact(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
}

}  // namespace

CScriptedWebView::CScriptedWebView(CScriptedWeb& web, IWebViewOwner& owner, QWidget* parent)
    : IWebView(parent), m_web(web), m_owner(owner) {
    setObjectName(QStringLiteral("ScriptedWebView"));
}

CScriptedWebView::~CScriptedWebView() {
    auto& views = m_web.m_views;
    views.erase(std::remove(views.begin(), views.end(), this), views.end());
}

void CScriptedWebView::Load(const WebLoad& load) {
    m_bFrozen = false;
    m_load = load;
    m_web.m_loads.push_back(load.url.toEncoded().toStdString());
    if (m_owner.AcceptNavigation(load.url, EnWebNavigation::kLoad, true)) {
        m_owner.LoadStarted();
    }
}

void CScriptedWebView::SetFrozen(bool frozen) {
    m_bFrozen = frozen;
    m_nFreezes += frozen ? 1 : 0;
}

void CScriptedWebView::Commit(const QString& url) {
    m_committed = QUrl(url);
    m_strPage.clear();
    m_nCalls = 0;
}

void CScriptedWebView::GoTo(const QString& url) {
    StartOfPage();
    Commit(url);
    m_owner.LoadFinished(true, 200);
}

void CScriptedWebView::Greet() {
    m_strPage = "document-" + std::to_string(++m_nPages);
    Json::Value message;
    message["page"] = m_strPage;
    Post(QString::fromStdString(Compact(message)));
}

void CScriptedWebView::Succeed(int httpCode) {
    const QPointer<CScriptedWebView> alive = this;
    Commit(m_load.url.toString());
    if (m_load.bridgeOrigins.contains(host::web::OriginOf(m_committed))) {
        Greet();
    }
    if (alive) {
        m_owner.LoadFinished(true, httpCode);
    }
}

void CScriptedWebView::Fail(int httpCode) {
    m_owner.LoadFinished(false, httpCode);
}

bool CScriptedWebView::Navigate(const char* url, EnWebNavigation type, bool mainFrame) {
    return m_owner.AcceptNavigation(QUrl(QString::fromUtf8(url)), type, mainFrame);
}

void CScriptedWebView::Kill() {
    m_owner.RenderProcessGone();
}

bool CScriptedWebView::OpenPopup(const char* url, const QSize& size) {
    if (!m_owner.AcceptPopup()) {
        return false;
    }
    m_owner.PopupAddressed(QUrl(QString::fromUtf8(url)), size);
    return true;
}

void CScriptedWebView::WantMenu(int possible) {
    m_owner.ContextMenuWanted(mapToGlobal(rect().center()), possible, [this](int flag) { m_edits.push_back(flag); });
}

int CScriptedWebView::Call(const char* name, const Json::Value& params) {
    Json::Value message;
    message["page"] = m_strPage;
    message["call"] = ++m_nCalls;
    message["name"] = name;
    message["params"] = params;
    const int call = m_nCalls;
    Post(QString::fromStdString(Compact(message)));
    return call;
}

void CScriptedWebView::Notify(const char* name, const Json::Value& params) {
    Json::Value message;
    message["page"] = m_strPage;
    message["name"] = name;
    message["params"] = params;
    Post(QString::fromStdString(Compact(message)));
}

std::vector<std::string> CScriptedWebView::Received() const {
    std::vector<std::string> received;
    for (const std::string& text : m_messages) {
        Json::Value message;
        EXPECT_TRUE(Json::Reader().parse(text, message)) << text;
        EXPECT_TRUE(message["page"].isString()) << text;
        message.removeMember("page");
        received.push_back(Compact(message));
    }
    return received;
}

const std::vector<std::string>& CScriptedWeb::Loads() {
    m_nLookedAt = m_loads.size();
    return m_loads;
}

void CScriptedWeb::Forget() {
    m_loads.clear();
    m_nLookedAt = 0;
}

void CScriptedWeb::CheckAllLookedAt() {
    for (size_t i = m_nLookedAt; i < m_loads.size(); ++i) {
        ADD_FAILURE() << "An unexpected page was loaded: " << m_loads[i];
    }
    m_nLookedAt = m_loads.size();
}

CScriptedWebView& CScriptedWeb::View() const {
    EXPECT_FALSE(m_views.empty()) << "There is no web view";
    return *m_views.back();
}

IWebView* CScriptedWeb::NewView(IWebViewOwner& owner, QWidget* parent) {
    if (m_bMissing) {
        return nullptr;
    }
    ++m_nMade;
    m_views.push_back(new CScriptedWebView(*this, owner, parent));
    return m_views.back();
}
