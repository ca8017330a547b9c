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
#include "picture/ImageValidator.h"
#include "picture/PictureCache.h"
#include "ui/IPictures.h"

class IClientState;

/// How the fetch of a picture ended, for who watches.
struct PictureEnd {
    unsigned long load = 0;
    QString url;
    HttpResult result = kHttpOk;
    int status = 0;          // the server's; 0 where it gave none, or was not asked
    bool fromCache = false;  // the bytes are those of the disk
    size_t bytes = 0;
    std::string refusal;  // why bytes that are there are no picture; empty if they are
    int64_t durationMs = 0;
};

/// Pictures over HTTP, from where the client speaks to at all: https, and by http this machine in an internal build
/// and the one server on it that AllowInsecureOrigin names in a release; no redirects to another origin, no proxy and
/// no cookies. Few at a time, the others wait. They are judged, decoded and scaled on a thread of its own, and kept on
/// the disk as their servers allow; what was damaged there is fetched anew. Main thread. The environment must outlive
/// it.
class CPictureService : public QObject, public IPictures {
    Q_OBJECT

public:
    struct Options {
        ImageLimits limits;
        int timeoutMs = 10'000;  // from the first byte of a fetch to its last
        int maxFetches = 4;
    };

    CPictureService(const IClientState& state, const QString& cacheFolder);
    CPictureService(const IClientState& state, const QString& cacheFolder, const Options& options);
    /// Ends what is under way without a word; waits for the picture that is just being decoded.
    ~CPictureService() override;

    void AllowInsecureOrigin(const QUrl& origin) { m_insecureOrigin = origin; }

    void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;

    /// Loads that have not ended.
    int RunningCount() const { return int(m_jobs.size()); }

Q_SIGNALS:
    /// A load begins; their numbers begin at 1.
    void Asked(unsigned long load, const QString& url);
    /// It has ended, and whoever asked is told next. Not told of loads whose guard is gone.
    void Ended(const PictureEnd& end);

private:
    enum class EnStage { kRefused, kWaiting, kWorking, kFetching };

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
    };
    using Body = std::shared_ptr<const std::string>;
    /// Runs on the worker, and gives what is to be done with the result on the main thread.
    using Task = std::function<std::function<void()>(CPictureCache& cache)>;

    void Work(Task task);
    void StartNext();
    void LookInCache(unsigned long id);
    void Fetch(unsigned long id, const Body& kept, const std::string& tag);
    void FetchAnew(unsigned long id);
    void OnAnswer(unsigned long id, const std::shared_ptr<HttpRspInfo>& response, const Body& kept);
    void Decode(unsigned long id, const Body& body, const std::optional<CPictureCache::Keeping>& keeping);
    void Finish(unsigned long id, const std::shared_ptr<const Picture>& picture);
    void Drop(unsigned long id);

    const IClientState& m_state;
    QUrl m_insecureOrigin;  // a release accepts plain HTTP from this origin only
    const QString m_cacheFolder;
    const Options m_options;
    unsigned long m_nLastId = 0;
    CCurlLoop m_loop;  // destroyed after the exchanges of the jobs
    std::map<unsigned long, Job> m_jobs;
    std::deque<unsigned long> m_waiting;
    int m_nRunning = 0;
    std::unique_ptr<CPictureCache> m_cache;  // the worker's
    QThreadPool m_worker;                    // of one thread
};
