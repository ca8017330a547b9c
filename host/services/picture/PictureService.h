#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <atomic>
#include <deque>
#include <map>
#include <memory>

#include "http/HttpExchange.h"
#include "picture/DetachedTasks.h"
#include "picture/ImageValidator.h"
#include "picture/PictureCache.h"
#include "picture/PictureDecoder.h"
#include "ui/IPictures.h"

class IClientState;

/// The result of a load, for recorders.
struct PictureEnd {
    unsigned long load = 0;
    QString url;
    HttpResult result = kHttpOk;
    int status = 0;          // HTTP status; 0 without an answer
    bool fromCache = false;  // the bytes are from the disk cache
    size_t bytes = 0;
    std::string refusal;  // why the bytes are no valid picture; empty if they are
    int64_t durationMs = 0;
};

/// Pictures over HTTP. https is allowed, and http to this machine in internal builds and to the origin of
/// AllowInsecureOrigin.
/// There are no redirects to another origin, no proxy and no cookies. A few loads run at a time, the others wait.
/// Pictures are validated, decoded and scaled on other threads, and cached on disk as their servers allow. Damaged
/// files are fetched again. A picture that takes too long to decode fails. The state must outlive the service. Main
/// thread.
class CPictureService : public QObject, public IPictures {
    Q_OBJECT

public:
    struct Options {
        ImageLimits limits;
        int timeoutMs = 10'000;  // for one whole fetch
        int maxFetches = 4;
        int decodeMs = 2'000;  // for validation and decoding
        std::function<decltype(picture_decoder::Decode)> decode = picture_decoder::Decode;
    };

    CPictureService(const IClientState& state, const QString& cacheFolder);
    CPictureService(const IClientState& state, const QString& cacheFolder, const Options& options);
    /// Cancels all loads without a callback. It does not wait for running decoders.
    ~CPictureService() override;

    void AllowInsecureOrigin(const QUrl& origin) { m_insecureOrigin = origin; }

    void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;

    /// Number of running loads.
    int RunningCount() const { return int(m_jobs.size()); }

Q_SIGNALS:
    /// A load starts. Numbers begin at 1.
    void Asked(unsigned long load, const QString& url);
    /// A load has ended. Emitted before its callback, and not for loads whose guard is gone.
    void Ended(const PictureEnd& end);

private:
    enum class EnStage { kRefused, kWaiting, kWorking, kFetching };
    using Body = std::shared_ptr<const std::string>;

    struct Job {
        EnStage stage = EnStage::kWaiting;
        HttpMessage message;
        QSize size;
        bool moving = false;
        QPointer<QObject> guard;
        QMetaObject::Connection guarded;
        Done done;
        std::unique_ptr<CHttpExchange> exchange;
        PictureEnd end;
        QElapsedTimer clock;
        std::shared_ptr<std::atomic<bool>> cancelled = std::make_shared<std::atomic<bool>>(false);
        Body body;  // waits for its decoding
        std::optional<CPictureCache::Keeping> keeping;
        unsigned long decode = 0;  // number of the running decoding
    };
    /// Runs on the worker. The result runs on the main thread.
    using Task = std::function<std::function<void()>(CPictureCache& cache)>;

    void Work(Task task);
    void StartNext();
    void LookInCache(unsigned long id);
    void Fetch(unsigned long id, const Body& kept, const std::string& tag);
    void FetchAnew(unsigned long id);
    void OnAnswer(unsigned long id, const std::shared_ptr<HttpRspInfo>& response, const Body& kept);
    void Decode(unsigned long id, const Body& body, const std::optional<CPictureCache::Keeping>& keeping);
    void StartNextDecode();
    void StartDecode(unsigned long id);
    void OnDecoded(unsigned long id, unsigned long decode, const std::shared_ptr<const Picture>& picture,
                   const std::string& reason);
    void OnDecodeTime(unsigned long id, unsigned long decode);
    void EndDecode(unsigned long id, const std::shared_ptr<const Picture>& picture, const std::string& reason);
    void Finish(unsigned long id, const std::shared_ptr<const Picture>& picture);
    void Drop(unsigned long id);

    const IClientState& m_state;
    QUrl m_insecureOrigin;  // the only origin of http in a release
    const QString m_cacheFolder;
    const Options m_options;
    unsigned long m_nLastId = 0;
    CCurlLoop m_loop;  // destroyed after the exchanges of the jobs
    std::map<unsigned long, Job> m_jobs;
    std::deque<unsigned long> m_waiting;
    int m_nRunning = 0;
    std::unique_ptr<CPictureCache> m_cache;  // used by the worker only
    QThreadPool m_worker;                    // one thread
    std::deque<unsigned long> m_toDecode;
    unsigned long m_nLastDecode = 0;
    int m_nDecoding = 0;  // without those that were given up
    CDetachedTasks m_decoders;
};
