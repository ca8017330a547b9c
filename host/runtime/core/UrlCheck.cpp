#include "core/UrlCheck.h"

#include <QSet>
#include <algorithm>

namespace host {
namespace {

UrlVerdict Refuse(const char* reason) {
    return {EnUrlTarget::kRefused, QUrl(), QString::fromLatin1(reason)};
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

UrlVerdict CheckUrl(const QString& text, bool internal) {
    if (text.isEmpty()) {
        return Refuse("it is empty");
    }
    if (text.size() > kMaxUrlLength) {
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
        return {EnUrlTarget::kPage, url, QString()};
    }
    if (scheme == QLatin1String("http") && !(internal && IsLoopback(url.host()))) {
        return Refuse("plain http is for this machine alone, and for internal builds");
    }
    return {EnUrlTarget::kWeb, url, QString()};
}

}  // namespace host
