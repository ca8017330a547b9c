#include "picture/PictureService.h"

#include <QTimer>
#include <algorithm>

#include "core/IClientState.h"
#include "framework/HostLog.h"
#include "framework/LogText.h"

namespace {

constexpr host::CHostLog kLog("Picture");
constexpr int kMaxLoggedLength = 200;
constexpr qint64 kMaxRequestedPixels = 16'000'000;
// One slow picture leaves a decoder to the others. A decoder that was given up still runs.
constexpr int kMaxDecoding = 2;
constexpr int kMaxDecoders = 4;
constexpr int kStatusOk = 200;
constexpr int kStatusNotModified = 304;

std::string Shown(const QString& url) {
    return host::EscapedLogText(url.left(kMaxLoggedLength));
}

// A widget without a size still needs to know whether there is a picture.
QSize Sensible(QSize size) {
    size = size.expandedTo(QSize(1, 1));
    while (qint64(size.width()) * size.height() > kMaxRequestedPixels) {
        size = (size / 2).expandedTo(QSize(1, 1));
    }
    return size;
}

HttpOptions Http(const ImageLimits& limits) {
    HttpOptions http;
    http.maxBodyBytes = limits.bytes;
    return http;
}

}  // namespace

CPictureService::CPictureService(const IClientState& state, const QString& cacheFolder)
    : CPictureService(state, cacheFolder, Options()) {}

CPictureService::CPictureService(const IClientState& state, const QString& cacheFolder, const Options& options)
    : m_state(state), m_cacheFolder(cacheFolder), m_options(options) {
    // One permanent thread, since the cache is bound to it.
    m_worker.setMaxThreadCount(1);
    m_worker.setExpiryTimeout(-1);
}

CPictureService::~CPictureService() {
    for (auto& [id, job] : m_jobs) {
        *job.cancelled = true;
    }
    m_worker.start([this] { m_cache.reset(); });
    m_worker.waitForDone();
}

void CPictureService::Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) {
    const unsigned long id = ++m_nLastId;
    Job& job = m_jobs[id];
    job.end.load = id;
    job.end.url = url;
    job.clock.start();
    job.size = Sensible(size);
    job.moving = moving;
    job.guard = guard;
    job.done = std::move(done);
    job.guarded = connect(guard, &QObject::destroyed, this, [this, id] { Drop(id); });
    Q_EMIT Asked(id, url);
    HttpReqInfo request;
    request.m_strUrl = url.toStdString();
    std::string reason;
    auto message = http_request::Make(request, !m_state.IsReleaseAppVersion(), m_insecureOrigin, reason);
    if (!message) {
        kLog.Info(FMT_STRING("Refused a picture, {}: {}"), reason, Shown(url));
        job.stage = EnStage::kRefused;
        job.end.result = kHttpBadRequest;
        QMetaObject::invokeMethod(
            this, [this, id] { Finish(id, nullptr); }, Qt::QueuedConnection);
        return;
    }
    job.message = std::move(*message);
    m_waiting.push_back(id);
    StartNext();
}

void CPictureService::Work(Task task) {
    m_worker.start([this, task = std::move(task)] {
        if (!m_cache) {
            m_cache = std::make_unique<CPictureCache>(m_cacheFolder);
        }
        QMetaObject::invokeMethod(this, task(*m_cache), Qt::QueuedConnection);
    });
}

void CPictureService::StartNext() {
    while (m_nRunning < m_options.maxFetches && !m_waiting.empty()) {
        const unsigned long id = m_waiting.front();
        m_waiting.pop_front();
        ++m_nRunning;
        LookInCache(id);
    }
}

void CPictureService::LookInCache(unsigned long id) {
    Job& job = m_jobs.at(id);
    job.stage = EnStage::kWorking;
    Work([this, id, url = job.message.url, cancelled = job.cancelled](CPictureCache& cache) -> std::function<void()> {
        const auto found = *cancelled ? std::nullopt : cache.Find(url);
        const Body kept = found ? std::make_shared<const std::string>(found->bytes) : nullptr;
        if (found && found->fresh) {
            return [this, id, kept] {
                m_jobs.at(id).end.fromCache = true;
                Decode(id, kept, std::nullopt);
            };
        }
        return [this, id, kept, tag = found ? found->tag : std::string()] { Fetch(id, kept, tag); };
    });
}

void CPictureService::Fetch(unsigned long id, const Body& kept, const std::string& tag) {
    Job& job = m_jobs.at(id);
    if (*job.cancelled) {
        Finish(id, nullptr);
        return;
    }
    job.stage = EnStage::kFetching;
    if (!tag.empty()) {
        job.message.headers["if-none-match"] = QByteArray::fromStdString(tag);
    }
    job.exchange = std::make_unique<CHttpExchange>(m_loop, job.message, m_options.timeoutMs, Http(m_options.limits));
    connect(job.exchange.get(), &CHttpExchange::Ended, this,
            [this, id, kept](const std::shared_ptr<HttpRspInfo>& response) { OnAnswer(id, response, kept); });
    job.exchange->Begin();
}

// Without the tag, so that the server sends the whole picture.
void CPictureService::FetchAnew(unsigned long id) {
    Job& job = m_jobs.at(id);
    job.end.fromCache = false;
    job.end.refusal.clear();
    job.message.headers.erase("if-none-match");
    Fetch(id, nullptr, std::string());
}

void CPictureService::OnAnswer(unsigned long id, const std::shared_ptr<HttpRspInfo>& response, const Body& kept) {
    Job& job = m_jobs.at(id);
    // The exchange is the sender of this signal, so it is deleted later.
    CHttpExchange* exchange = job.exchange.release();
    const auto keeping = CPictureCache::KeepingOf(exchange->Header("cache-control"), exchange->Header("etag"));
    exchange->deleteLater();
    job.end.result = HttpResult(response->m_nResult);
    job.end.status = response->m_nHttpStatusCode;
    job.end.bytes = response->m_strBody.size();
    if (response->m_nResult == kHttpOk && response->m_nHttpStatusCode == kStatusOk) {
        Decode(id, Body(response, &response->m_strBody), keeping);
    } else if (response->m_nResult == kHttpOk && response->m_nHttpStatusCode == kStatusNotModified && kept) {
        job.end.fromCache = true;
        Decode(id, kept, keeping);
    } else {
        kLog.Info(FMT_STRING("No picture, result {}, status {}: {}"), response->m_nResult, response->m_nHttpStatusCode,
                  Shown(job.message.url.toString()));
        Finish(id, nullptr);
    }
}

void CPictureService::Decode(unsigned long id, const Body& body, const std::optional<CPictureCache::Keeping>& keeping) {
    Job& job = m_jobs.at(id);
    job.stage = EnStage::kWorking;
    job.end.bytes = body->size();
    job.body = body;
    job.keeping = keeping;
    m_toDecode.push_back(id);
    StartNextDecode();
}

void CPictureService::StartNextDecode() {
    while (m_nDecoding < kMaxDecoding && m_decoders.RunningCount() < kMaxDecoders && !m_toDecode.empty()) {
        const unsigned long id = m_toDecode.front();
        m_toDecode.pop_front();
        if (*m_jobs.at(id).cancelled) {
            Finish(id, nullptr);
        } else {
            StartDecode(id);
        }
    }
}

void CPictureService::StartDecode(unsigned long id) {
    Job& job = m_jobs.at(id);
    job.decode = ++m_nLastDecode;
    ++m_nDecoding;
    const auto decode = [this, id, number = job.decode, body = job.body, size = job.size, moving = job.moving,
                         limits = m_options.limits, decode = m_options.decode,
                         cancelled = job.cancelled]() -> CDetachedTasks::Result {
        std::shared_ptr<const Picture> picture;
        std::string reason;
        try {
            const auto info = image_validator::Validate(*body, limits, reason);
            picture = info ? decode(*body, *info, size, moving, *cancelled) : nullptr;
            reason = info ? "it can't be decoded" : reason;
        } catch (const std::exception& error) {
            reason = error.what();
        }
        return [this, id, number, picture, reason] { OnDecoded(id, number, picture, reason); };
    };
    if (m_decoders.Start(decode)) {
        QTimer::singleShot(m_options.decodeMs, this, [this, id, number = job.decode] { OnDecodeTime(id, number); });
    } else {
        // The callback may destroy the service.
        const auto fail = [this, id, number = job.decode] { OnDecoded(id, number, nullptr, "there is no thread"); };
        QMetaObject::invokeMethod(this, fail, Qt::QueuedConnection);
    }
}

void CPictureService::OnDecoded(unsigned long id, unsigned long decode, const std::shared_ptr<const Picture>& picture,
                                const std::string& reason) {
    const auto found = m_jobs.find(id);
    if (found != m_jobs.end() && found->second.decode == decode) {
        EndDecode(id, picture, reason);
    } else {
        StartNextDecode();
    }
}

void CPictureService::OnDecodeTime(unsigned long id, unsigned long decode) {
    const auto found = m_jobs.find(id);
    if (found != m_jobs.end() && found->second.decode == decode) {
        *found->second.cancelled = true;
        EndDecode(id, nullptr, "it takes too long to decode");
    }
}

void CPictureService::EndDecode(unsigned long id, const std::shared_ptr<const Picture>& picture,
                                const std::string& reason) {
    --m_nDecoding;
    Job& job = m_jobs.at(id);
    job.decode = 0;
    const Body body = std::move(job.body);
    const QUrl url = job.message.url;
    if (!picture) {
        kLog.Info(FMT_STRING("No picture, {}: {}"), job.guard ? reason : "it is not wanted any more",
                  Shown(url.toString()));
        job.end.refusal = reason;
    }
    StartNextDecode();
    if (picture && job.keeping) {
        Work([this, id, picture, url, body, keeping = *job.keeping](CPictureCache& cache) {
            cache.Keep(url, *body, keeping);
            return [this, id, picture] { Finish(id, picture); };
        });
    } else if (!picture && job.end.fromCache && !*job.cancelled) {
        // The picture was valid when it was saved, so the file is damaged.
        Work([this, id, url](CPictureCache& cache) {
            cache.Remove(url);
            return [this, id] { FetchAnew(id); };
        });
    } else {
        Finish(id, picture);
    }
}

// The callback may destroy the service, so it is the last access.
void CPictureService::Finish(unsigned long id, const std::shared_ptr<const Picture>& picture) {
    const auto found = m_jobs.find(id);
    if (found == m_jobs.end()) {
        return;
    }
    Job job = std::move(found->second);
    m_jobs.erase(found);
    disconnect(job.guarded);
    if (job.stage != EnStage::kRefused) {
        --m_nRunning;
        StartNext();
    }
    if (job.guard) {
        job.end.durationMs = job.clock.elapsed();
        Q_EMIT Ended(job.end);
        host::CallAndLogExceptions(kLog, "A picture's callback", [&] { job.done(picture); });
    }
}

// A job of the worker stays until it returns: its bytes still count as memory in use.
void CPictureService::Drop(unsigned long id) {
    const auto found = m_jobs.find(id);
    if (found == m_jobs.end()) {
        return;
    }
    Job& job = found->second;
    *job.cancelled = true;
    switch (job.stage) {
        case EnStage::kWorking:
        case EnStage::kRefused:
            return;
        case EnStage::kWaiting:
            m_waiting.erase(std::find(m_waiting.begin(), m_waiting.end(), id));
            m_jobs.erase(found);
            return;
        case EnStage::kFetching:
            m_jobs.erase(found);
            --m_nRunning;
            StartNext();
            return;
    }
}
