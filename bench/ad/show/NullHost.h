#pragma once

#include <memory>
#include <string>

#include "core/IClientState.h"
#include "core/IHttp.h"
#include "core/ILocalStore.h"
#include "core/IReports.h"
#include "core/ITimeAndRandom.h"
#include "core/MainThreadPoster.h"
#include "framework/ILog.h"
#include "support/VirtualTime.h"
#include "ui/IPictures.h"

/// A host whose services accept every call, answer as servers do and record nothing. A benchmark on it measures the
/// module and the kit only. It is installed during its lifetime and uses virtual time.
class CNullHost {
public:
    /// `search` is the answer of the ad server. Each exposure is accepted.
    explicit CNullHost(std::string search);
    ~CNullHost();
    CNullHost(const CNullHost&) = delete;
    CNullHost& operator=(const CNullHost&) = delete;

    CVirtualTime time;

private:
    struct CLog : ILog {
        void Write(const LogRecord& record) override { written += size_t(record.text.size()); }
        void AssertionFailed(const AssertionRecord& record) override;
        size_t written = 0;  // so that the text is read
    };
    struct CReports : IReports {
        bool Report(const ReportEvent& event) override { return !event.name.empty(); }
        std::shared_ptr<std::string> TimerStart(const std::string& event) override {
            return std::make_shared<std::string>(event);
        }
        bool TimerEnd(const ReportEvent& event) override { return !event.name.empty(); }
    };
    struct CHttp : IHttp {
        CHttp(IPoster& to, std::string search) : poster(to), answer(std::move(search)) {}
        unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                            HttpWorkPool pool, core::network::http::Progress upload,
                            core::network::http::Progress download) override;
        IPoster& poster;
        const std::string answer;
        unsigned long last = 0;
    };
    struct CStore : ILocalStore {
        bool ReadString(Owner, const std::string&, std::string&) override { return false; }
        bool SaveString(Owner, const std::string&, const std::string&) override { return true; }
        bool ReadInt64(const std::string&, int64_t&) override { return false; }
        bool SaveInt64(const std::string&, int64_t) override { return true; }
    };
    struct CState : IClientState {
        std::string DomainUrl(const std::string&, core::url_data::DomainBizType) const override {
            return "https://ads.test";
        }
        bool IsAllowed(ZRUniformResourceSlotType) const override { return true; }
    };
    /// Returns the same picture for each load, one turn of the event loop later.
    struct CPictures : IPictures {
        explicit CPictures(IPoster& to);
        void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;
        IPoster& poster;
        const std::shared_ptr<Picture> picture = std::make_shared<Picture>();
    };

    struct CTimeAndRandom : ITimeAndRandom {
        explicit CTimeAndRandom(const CVirtualTime& of) : time(of) {}
        int64_t ServerTimeMs() const override { return time.ServerTimeMs(); }
        /// Numbers with the same count of digits.
        uint32_t RandomNumber() override { return 2'000'000'000u + last++ % 1'000'000'000u; }
        const CVirtualTime& time;
        uint32_t last = 0;
    };

    CLog m_log;
    CMainThreadPoster m_poster{[this] { return time.Now(); }};
    CReports m_reports;
    CHttp m_http;
    CStore m_store;
    CState m_state;
    CPictures m_pictures{m_poster};
    CTimeAndRandom m_timeAndRandom{time};
};
