#include "WebPage.h"

#include <QCoreApplication>
#include <QTimer>
#include <QWebEngineCertificateError>
#include <QWebEngineProfile>

#include "framework/HostLog.h"
#include "framework/LogText.h"

namespace {

constexpr host::CHostLog kLog("WebEngine");
constexpr int kStandInMs = 1000;
constexpr int kMaxLoggedLength = 200;

EnWebNavigation ToNavigation(QWebEnginePage::NavigationType type) {
    switch (type) {
        case QWebEnginePage::NavigationTypeTyped:
            return EnWebNavigation::kLoad;
        case QWebEnginePage::NavigationTypeLinkClicked:
            return EnWebNavigation::kLink;
        case QWebEnginePage::NavigationTypeRedirect:
            return EnWebNavigation::kRedirect;
        default:
            return EnWebNavigation::kOther;
    }
}

}  // namespace

CWebPage::CWebPage(QWebEngineProfile& profile, IWebViewOwner& owner, QObject* parent)
    : QWebEnginePage(&profile, parent), m_owner(owner) {
    connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
        kLog.Info(FMT_STRING("Denied a permission to a page: {}"), int(feature));
        setFeaturePermission(origin, feature, PermissionDeniedByUser);
    });
}

bool CWebPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool mainFrame) {
    // The client itself displays an empty document before an address that differs behind "#" only.
    const bool blank = m_bLeaving && mainFrame && url == QUrl(QStringLiteral("about:blank"));
    return blank || m_owner.AcceptNavigation(url, ToNavigation(type), mainFrame);
}

QWebEnginePage* CWebPage::createWindow(WebWindowType /*type*/) {
    return m_owner.AcceptPopup() ? new CPopupStandIn(*profile(), m_owner, this) : nullptr;
}

QStringList CWebPage::chooseFiles(FileSelectionMode /*mode*/, const QStringList& /*old*/,
                                  const QStringList& /*types*/) {
    return {};
}

void CWebPage::javaScriptAlert(const QUrl& /*origin*/, const QString& /*text*/) {}

// The engine's own question before a page is left comes here as well.
bool CWebPage::javaScriptConfirm(const QUrl& /*origin*/, const QString& text) {
    static const QString leave = QCoreApplication::translate(
        "QWebEnginePage", "Are you sure you want to leave this page? Changes that you made may not be saved.");
    return m_bLeaving && text == leave;
}

bool CWebPage::javaScriptPrompt(const QUrl& /*origin*/, const QString& /*text*/, const QString& /*standard*/,
                                QString* /*result*/) {
    return false;
}

void CWebPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& text, int line,
                                        const QString& /*source*/) {
    if (level == ErrorMessageLevel) {
        kLog.Info(FMT_STRING("A script failed in line {}: {}"), line,
                  host::EscapedLogText(text.left(kMaxLoggedLength)));
    }
}

bool CWebPage::certificateError(const QWebEngineCertificateError& error) {
    kLog.Error(FMT_STRING("Refused a certificate: {}"), error.errorDescription().toStdString());
    return false;
}

// The engine asks for the window first, then for its size, then for its address. A blank window never has one.
CPopupStandIn::CPopupStandIn(QWebEngineProfile& profile, IWebViewOwner& owner, QObject* parent)
    : QWebEnginePage(&profile, parent), m_owner(owner) {
    connect(this, &QWebEnginePage::geometryChangeRequested, this,
            [this](const QRect& place) { m_size = place.size(); });
    QTimer::singleShot(kStandInMs, this, &QObject::deleteLater);
}

bool CPopupStandIn::acceptNavigationRequest(const QUrl& url, NavigationType /*type*/, bool mainFrame) {
    if (mainFrame && !m_bAddressed && url.scheme() != QLatin1String("about")) {
        m_bAddressed = true;
        QTimer::singleShot(0, this, [this, url] {
            m_owner.PopupAddressed(url, m_size);
            deleteLater();
        });
    }
    return false;
}
