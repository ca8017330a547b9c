#pragma once

#include <memory>
#include <string>

#include "core/IDomains.h"
#include "core/IHttp.h"
#include "core/ILocalStore.h"
#include "core/IRandom.h"
#include "core/IReports.h"
#include "core/ISlots.h"
#include "core/MainThreadPoster.h"
#include "framework/ILog.h"
#include "support/VirtualTime.h"
#include "ui/IPictures.h"

/// Services that take all that the module gives them, answer as servers do, and keep nothing: what is measured
/// beside them is the module and the kit. Joined to the contract while it lives; in virtual time.
class CQuietHost {
public:
    /// `search` is what the ad server answers; an exposure is taken without a word.
    explicit CQuietHost(std::string search);
    ~CQuietHost();
    CQuietHost(const CQuietHost&) = delete;
    CQuietHost& operator=(const CQuietHost&) = delete;

    CVirtualTime time;

private:
    struct CLog : ILog {
        void Write(const LogRecord& record) override { written += size_t(record.text.size()); }
        void AssertionFailed(const AssertionRecord& record) override;
        size_t written = 0;  // so that the text is looked at
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
    struct CDomains : IDomains {
        std::string DomainUrl(const std::string&, core::url_data::DomainBizType) const override {
            return "https://ads.test";
        }
    };
    struct CInterruptionSlots : ISlots {
        bool IsAllowed(ZRUniformResourceSlotType) const override { return true; }
    };
    /// Every picture is the one in memory, which comes a turn of the loop later.
    struct CPictures : IPictures {
        explicit CPictures(IPoster& to);
        void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;
        IPoster& poster;
        const std::shared_ptr<Picture> picture = std::make_shared<Picture>();
    };

    /// All of the same length as text.
    struct CNumbers : IRandom {
        uint32_t Next() override { return 2'000'000'000u + m_nLast++ % 1'000'000'000u; }
        uint32_t m_nLast = 0;
    };

    CLog m_log;
    CMainThreadPoster m_poster{[this] { return time.Now(); }};
    CReports m_reports;
    CHttp m_http;
    CStore m_store;
    CDomains m_domains;
    CInterruptionSlots m_slots;
    CPictures m_pictures{m_poster};
    CNumbers m_numbers;
};
