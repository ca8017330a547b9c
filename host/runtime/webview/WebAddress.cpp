#include "webview/WebAddress.h"

#include "core/UrlCheck.h"
#include "core/config_common.h"
#include "core/environment.h"
#include "core/url_data.h"

namespace host::web {
namespace {

QString OwnServer() {
    const std::string url = core::url_data::GetDomainUrl("pages", core::url_data::kDomainBizDefault);
    return OriginOf(QUrl(QString::fromStdString(url), QUrl::StrictMode));
}

// An entry is a whole origin. One with a path or a query would promise a distinction that nothing makes.
QString OriginOfEntry(const Json::Value& entry) {
    if (!entry.isString()) {
        return {};
    }
    const UrlVerdict verdict = CheckUrl(QString::fromStdString(entry.asString()), true);
    const bool bare = (verdict.url.path().isEmpty() || verdict.url.path() == QLatin1String("/")) &&
                      !verdict.url.hasQuery() && !verdict.url.hasFragment();
    return verdict.target == EnUrlTarget::kWeb && bare ? OriginOf(verdict.url) : QString();
}

}  // namespace

QString OriginOf(const QUrl& url) {
    const QString scheme = url.scheme();
    const bool secure = scheme == QLatin1String("https");
    if (!url.isValid() || !(secure || scheme == QLatin1String("http")) || url.host().isEmpty() ||
        url.authority().contains(QLatin1Char('@'))) {
        return {};
    }
    return QStringLiteral("%1://%2:%3").arg(scheme, url.host(QUrl::FullyEncoded)).arg(url.port(secure ? 443 : 80));
}

bool IsLoadable(const QUrl& url, QString& reason) {
    return IsLoadable(QString::fromLatin1(url.toEncoded()), reason);
}

bool IsLoadable(const QString& text, QString& reason) {
    const bool internal = !core::environment::IsReleaseAppVersion();
    const UrlVerdict verdict = CheckUrl(text, internal);
    if (verdict.target == EnUrlTarget::kWeb) {
        return true;
    }
    // The client's own server is on loopback, in release builds too.
    const UrlVerdict own = CheckUrl(text, true);
    if (own.target == EnUrlTarget::kWeb && OriginOf(own.url) == OwnServer()) {
        return true;
    }
    reason = verdict.target == EnUrlTarget::kPage ? QStringLiteral("its scheme is not allowed") : verdict.reason;
    return false;
}

QStringList BridgeOrigins() {
    QStringList origins;
    const Json::Value config = core::config_common::GetJsonConfigByName("web_bridge");
    if (config.isObject() && config["origins"].isArray()) {
        for (const Json::Value& entry : config["origins"]) {
            origins << OriginOfEntry(entry);
        }
    }
    if (!core::environment::IsReleaseAppVersion()) {
        origins << OwnServer();
    }
    origins.removeAll(QString());
    origins.removeDuplicates();
    return origins;
}

bool IsBridgeOrigin(const QUrl& committed) {
    const QString origin = OriginOf(committed);
    return !origin.isEmpty() && BridgeOrigins().contains(origin);
}

}  // namespace host::web
