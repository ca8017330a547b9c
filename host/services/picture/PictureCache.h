#pragma once

#include <QNetworkDiskCache>
#include <QUrl>
#include <optional>
#include <string>

/// Pictures on the disk, for as long as their servers said. One thread, which makes and ends it.
class CPictureCache {
public:
    struct Entry {
        std::string bytes;
        std::string tag;  // what the server knows this content by; empty: nothing
        bool fresh = false;
    };

    /// How long an answer may be kept, by its headers. Nothing: not at all.
    struct Keeping {
        int seconds = 0;
        std::string tag;
    };
    static std::optional<Keeping> KeepingOf(const std::string& cacheControl, const std::string& tag);

    /// All together on the disk; the oldest go first.
    static constexpr qint64 kMostBytes = 100 << 20;

    /// A folder that can't be written keeps nothing.
    explicit CPictureCache(const QString& folder);

    std::optional<Entry> Find(const QUrl& url);
    void Keep(const QUrl& url, const std::string& bytes, const Keeping& keeping);
    void Remove(const QUrl& url);

private:
    /// The toolkit's own looks at the limit ahead of a new file alone, and would keep one more.
    class CFiles : public QNetworkDiskCache {
    public:
        using QNetworkDiskCache::expire;
    };

    CFiles m_files;
};
