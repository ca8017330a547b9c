// The live heap of a banner of three ads after a thousand switches, compared with before. The goal is no growth.
// Ads differ in size, so both figures are the maximum over one turn of all ads.
#include <fmt/format.h>
#include <malloc.h>

#include <QApplication>
#include <algorithm>
#include <memory>

#include "Ad/Controller/ZRAdBannerController.h"
#include "BenchTable.h"
#include "NullHost.h"
#include "Offscreen.h"
#include "support/VirtualEventDispatcher.h"
#include "ui/ZSlideshow.h"

using namespace std::chrono_literals;

namespace {

constexpr char kAnswer[] = R"({"code": 0, "message": "ok", "data": {"ad_type": 3, "ad_position": 7,
    "enable_close": false, "banner_position": {"banner_type": 2, "carousel_interval": 5, "material_scale": "6:1",
    "material_corner": "8"}, "ad": [
    {"ad_id": "18100", "start_time": 1600000000, "end_time": 1900000000, "expire_time": 1900000000,
     "banner_ad": {"img": "https://pictures.test/a.png", "schema": "zrclient://page/news"}},
    {"ad_id": "18101", "start_time": 1600000000, "end_time": 1900000000, "expire_time": 1900000000,
     "banner_ad": {"img": "https://pictures.test/b.png", "schema": "zrclient://page/news"}},
    {"ad_id": "18102", "start_time": 1600000000, "end_time": 1900000000, "expire_time": 1900000000,
     "banner_ad": {"img": "https://pictures.test/c.png", "schema": "zrclient://page/news"}}]}})";

constexpr int kSwitches = 1000;
constexpr int kAds = 3;

/// Returns the bytes in use, of all threads.
double LiveHeap() {
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd);
}

/// A running banner in its page.
class CRunningBanner {
public:
    explicit CRunningBanner(CNullHost& host) : m_host(host), m_slot(nullptr, 7) {
        m_page.resize(700, 200);
        m_page.show();
        m_slot.GetAdBannerAsync(QSize(662, 110),
                                [this](QWidget* banner) {
                                    banner->setParent(&m_page);
                                    banner->show();
                                },
                                0, false, {});
        m_host.time.Settle();
        m_pShow = m_page.findChild<ZSlideshow*>();
        if (m_pShow) {
            QObject::connect(m_pShow, &ZSlideshow::currentChanged, m_pShow, [this] { ++m_nSwitches; });
        }
    }

    bool IsThere() const { return m_pShow && m_pShow->count() == kAds; }

    /// Waits for switches by the banner's own timer. Returns false if they do not happen.
    bool Switch(int times) {
        const int wanted = m_nSwitches + times;
        for (int i = 0; i < times; ++i) {
            m_host.time.Advance(5s);
        }
        return m_nSwitches == wanted;
    }

private:
    CNullHost& m_host;
    QWidget m_page;
    CZRAdBannerController m_slot;
    ZSlideshow* m_pShow = nullptr;
    int m_nSwitches = 0;
};

/// Returns the maximum over one turn; 0 if the banner stopped.
double MostInOneRound(CRunningBanner& banner) {
    double most = 0;
    for (int i = 0; i < kAds; ++i) {
        if (!banner.Switch(1)) {
            return 0;
        }
        most = std::max(most, LiveHeap());
    }
    return most;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    const bench::COffscreen application(argv, new CVirtualEventDispatcher);

    CNullHost host(kAnswer);
    CRunningBanner banner(host);
    const int times = options.quick ? 2 * kAds : kSwitches;
    // The first switches fill caches.
    if (!banner.IsThere() || !banner.Switch(times)) {
        fmt::print(stderr, "There is no banner that goes on\n");
        return 1;
    }
    const double before = MostInOneRound(banner);
    const bool goesOn = banner.Switch(times);
    const double after = MostInOneRound(banner);
    if (!goesOn || before <= 0 || after <= 0) {
        fmt::print(stderr, "The banner stopped\n");
        return 1;
    }
    return bench::PrintRows({{fmt::format("Live heap after {} switches of a banner", times), after, "Before them",
                              before, 1, bench::EnUnit::kBytes}},
                            options);
}
