#include "core/UrlCheck.h"

#include <QSet>
#include <QVector>
#include <algorithm>

namespace host {
namespace {

UrlVerdict Refuse(const char* reason) {
    return {EnUrlTarget::kRefused, QUrl(), QString::fromLatin1(reason)};
}

constexpr uint kNonJoiner = 0x200C;
constexpr uint kJoiner = 0x200D;

// Parsers differ in whether they remove or encode spaces and control characters. The opened URL could then differ from
// the checked one. A backslash is a slash in browsers only. Emoji are sequences of pictures with joiners.
bool IsUnsafe(uint code) {
    const QChar::Category category = QChar::category(code);
    return category == QChar::Other_Control || (category == QChar::Other_Format && code != kJoiner) ||
           QChar::isSpace(code) || code == '\\';
}

// The toolkit encodes host names by the rules of 2003, which map these characters to others or to nothing. By those of
// 2008 the name is another host.
bool IsAmbiguousInHost(uint code) {
    constexpr uint sharpS = 0xDF;
    constexpr uint capitalSharpS = 0x1E9E;
    constexpr uint finalSigma = 0x3C2;
    return code == sharpS || code == capitalSharpS || code == finalSigma || code == kJoiner || code == kNonJoiner;
}

/// The part of a whole URL with the host: from the slashes to the path, the query or the fragment.
QString AuthorityOf(const QString& url) {
    const int slashes = url.indexOf(QLatin1String("//"));
    const int from = slashes < 0 ? url.size() : slashes + 2;
    const auto ends = [](QChar c) { return c == QLatin1Char('/') || c == QLatin1Char('?') || c == QLatin1Char('#'); };
    return url.mid(from, int(std::find_if(url.begin() + from, url.end(), ends) - url.begin()) - from);
}

bool AnyIs(const QString& text, bool (*matches)(uint code)) {
    const QVector<uint> codes = text.toUcs4();
    return std::any_of(codes.begin(), codes.end(), matches);
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
    if (!text.isValidUtf16() || AnyIs(text, IsUnsafe)) {
        return Refuse("it holds a blank, a backslash or a control character");
    }
    if (AnyIs(AuthorityOf(text), IsAmbiguousInHost)) {
        return Refuse("its host can be read as two names");
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
