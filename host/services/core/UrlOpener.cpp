#include "core/UrlOpener.h"

#include <QSet>
#include <algorithm>

#include "core/IClientState.h"
#include "framework/HostLog.h"
#include "framework/LogText.h"

namespace {

constexpr host::CHostLog kLog("Url");
constexpr int kMaxLoggedLength = 200;

using Verdict = CUrlOpener::Verdict;
using EnTarget = CUrlOpener::EnTarget;

Verdict Refuse(const char* reason) {
    return {EnTarget::kRefused, QUrl(), QString::fromLatin1(reason)};
}

// Parsers differ in whether they remove or encode spaces and control characters. The opened URL could then differ from
// the checked one. A backslash is a slash in browsers only.
bool IsUnsafe(QChar character) {
    return character.category() == QChar::Other_Control || character.category() == QChar::Other_Format ||
           character.isSpace() || character == QLatin1Char('\\') || character.isSurrogate();
}

bool IsLoopback(const QString& host) {
    static const QSet<QString> names{QStringLiteral("127.0.0.1"), QStringLiteral("localhost"), QStringLiteral("::1")};
    return names.contains(host);
}

}  // namespace

Verdict CUrlOpener::Validate(const QString& text, bool internal) {
    if (text.isEmpty()) {
        return Refuse("it is empty");
    }
    if (text.size() > kMaxLength) {
        return Refuse("it is too long");
    }
    if (std::any_of(text.begin(), text.end(), IsUnsafe)) {
        return Refuse("it holds a blank, a backslash or a control character");
    }
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.isRelative()) {
        return Refuse("it is no whole URL");
    }
    const QString scheme = url.scheme();
    if (scheme != QLatin1String("https") && scheme != QLatin1String("http") && scheme != QLatin1String("zrclient")) {
        return Refuse("its scheme is not allowed");
    }
    if (url.authority().contains(QLatin1Char('@'))) {
        return Refuse("it names a user");
    }
    if (url.host().isEmpty()) {
        return Refuse("it names no host");
    }
    if (scheme == QLatin1String("zrclient")) {
        return {EnTarget::kPage, url, QString()};
    }
    if (scheme == QLatin1String("http") && !(internal && IsLoopback(url.host()))) {
        return Refuse("plain http is for this machine alone, and for internal builds");
    }
    return {EnTarget::kWeb, url, QString()};
}

bool CUrlOpener::Open(const UrlRequest& request) {
    Verdict verdict = Validate(request.url, !m_state.IsReleaseAppVersion());
    const bool hooked = verdict.target == EnTarget::kPage && m_hooks.Handle(request);
    if (verdict.target != EnTarget::kRefused && !hooked) {
        bool opened = false;
        host::CallAndLogExceptions(kLog, "Opening a URL", [&] {
            opened = verdict.target == EnTarget::kPage ? m_fnPage && m_fnPage(verdict.url)
                                                       : m_fnWeb && m_fnWeb(verdict.url, request.extra);
        });
        if (!opened) {
            verdict = Refuse("nothing in the client opens it");
        }
    }
    if (!verdict.reason.isEmpty()) {
        kLog.Error(FMT_STRING("Refused to open a URL, {}: {}"), verdict.reason.toStdString(),
                   host::EscapedLogText(request.url.left(kMaxLoggedLength)));
    }
    Q_EMIT Dispatched(request, verdict.reason);
    return verdict.reason.isEmpty();
}

void CUrlOpener::AddHook(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                         core::scheme::RouteMatchRule rule) {
    m_hooks.Add(schemeUrl, std::move(callback), owner, rule);
}
