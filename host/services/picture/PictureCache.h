#pragma once

#include <QNetworkDiskCache>
#include <QUrl>
#include <optional>
#include <string>

/// Pictures on disk, kept as long as their servers allow. Used, constructed and destroyed on one thread.
class CPictureCache {
public:
    struct Entry {
        std::string bytes;
        std::string tag;  // the ETag of the server; empty without one
        bool fresh = false;
    };

    /// The time for which an answer may be cached, by its headers. Empty if it may not.
    struct Keeping {
        int seconds = 0;
        std::string tag;
    };
    static std::optional<Keeping> KeepingOf(const std::string& cacheControl, const std::string& tag);

    /// Maximum size of the cache. The oldest pictures are removed first.
    static constexpr qint64 kMaxBytes = 100 << 20;

    /// Nothing is kept if the folder cannot be written.
    explicit CPictureCache(const QString& folder);

    std::optional<Entry> Find(const QUrl& url);
    void Keep(const QUrl& url, const std::string& bytes, const Keeping& keeping);
    void Remove(const QUrl& url);

private:
    /// QNetworkDiskCache checks its limit only before it inserts a file and would exceed it by one.
    class CFiles : public QNetworkDiskCache {
    public:
        using QNetworkDiskCache::expire;
    };

    CFiles m_files;
};
