#include "picture/PictureCache.h"

#include <QDateTime>
#include <QIODevice>
#include <algorithm>
#include <memory>

namespace {

constexpr int kMaxSeconds = 30 * 24 * 3600;
constexpr char kTag[] = "ETag";

bool IsPlainText(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < 0x7F; });
}

}  // namespace

std::optional<CPictureCache::Keeping> CPictureCache::KeepingOf(const std::string& cacheControl,
                                                               const std::string& tag) {
    Keeping keeping;
    keeping.tag = IsPlainText(tag) ? tag : std::string();
    bool asksFirst = false;
    const auto words = QString::fromStdString(cacheControl).toLower().split(QLatin1Char(','));
    for (const QString& each : words) {
        const QString word = each.trimmed();
        if (word == QLatin1String("no-store")) {
            return std::nullopt;
        }
        asksFirst = asksFirst || word == QLatin1String("no-cache");
        if (word.startsWith(QLatin1String("max-age="))) {
            bool isNumber = false;
            const qlonglong seconds = word.mid(int(sizeof("max-age=")) - 1).toLongLong(&isNumber);
            keeping.seconds = isNumber ? int(std::clamp<qlonglong>(seconds, 0, kMaxSeconds)) : 0;
        }
    }
    if (asksFirst) {
        keeping.seconds = 0;
    }
    if (keeping.seconds == 0 && keeping.tag.empty()) {
        return std::nullopt;
    }
    return keeping;
}

CPictureCache::CPictureCache(const QString& folder) {
    m_files.setCacheDirectory(folder);
    m_files.setMaximumCacheSize(kMaxBytes);
}

std::optional<CPictureCache::Entry> CPictureCache::Find(const QUrl& url) {
    const QNetworkCacheMetaData about = m_files.metaData(url);
    const std::unique_ptr<QIODevice> file(about.isValid() ? m_files.data(url) : nullptr);
    if (!file) {
        return std::nullopt;
    }
    Entry entry;
    entry.bytes = file->readAll().toStdString();
    entry.fresh = about.expirationDate() > QDateTime::currentDateTimeUtc();
    const auto headers = about.rawHeaders();
    for (const auto& [name, value] : headers) {
        if (name == kTag) {
            entry.tag = value.toStdString();
        }
    }
    return entry;
}

void CPictureCache::Keep(const QUrl& url, const std::string& bytes, const Keeping& keeping) {
    QNetworkCacheMetaData about;
    about.setUrl(url);
    about.setSaveToDisk(true);
    about.setExpirationDate(QDateTime::currentDateTimeUtc().addSecs(keeping.seconds));
    about.setRawHeaders({{kTag, QByteArray::fromStdString(keeping.tag)}});
    m_files.remove(url);
    QIODevice* file = m_files.prepare(about);
    if (!file) {
        return;
    }
    if (file->write(bytes.data(), qint64(bytes.size())) == qint64(bytes.size())) {
        m_files.insert(file);
        m_files.expire();
    } else {
        m_files.remove(url);
    }
}

void CPictureCache::Remove(const QUrl& url) {
    m_files.remove(url);
}
