// The time from a decoded list to the hidden card that waits for its picture. The reference is the bare kit widgets of
// a card: a widget, an image without a URL, a button. A row for information starts from the answer's text.
#include <benchmark/benchmark.h>
#include <json/reader.h>
#include <json/value.h>

#include <QApplication>
#include <ctime>
#include <memory>

#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "BenchTable.h"
#include "NullHost.h"
#include "Offscreen.h"
#include "support/ScriptedMainFrame.h"
#include "support/VirtualEventDispatcher.h"
#include "ui/ZIconButton.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZResource.h"

namespace {

constexpr char kAnswer[] =
    R"({"code": 0, "message": "ok", "data": {"ad_type": 2, "ad_position": 42, "show_duration": 15, "show_interval": 3600,
    "show_interval_type": 1, "enable_close": true, "ad": [
    {"ad_id": "18088", "name": "Autumn", "start_time": 1600000000, "end_time": 1800000000, "expire_time": 1800000000,
     "push_id": "p-1", "popup_ad": {"popup_type": 2, "show_areas": [500, 501],
     "bottom_popup": {"img": "https://pictures.test/card.png", "schema": "https://www.test/autumn"}}}]}})";

constexpr const char* kCard = "Decoded list of ads to its hidden card";
constexpr const char* kText = "Text of an answer to its hidden card";
constexpr const char* kBare = "The same widgets of the kit, bare";

class CSlot : public CZRAdBottomPopupController {
public:
    CSlot() : CZRAdBottomPopupController(nullptr) {}
    using CZRAdBottomPopupController::DeleteAdPopupView;
    using CZRAdBottomPopupController::OnRequestAdSucceeded;
};

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Null when the answer was refused.
CZRAdModelList* ListOf(const std::string& text) {
    Json::Value value;
    Json::Reader().parse(text, value);
    CZRAdResponseModel response(nullptr);
    return response.Decode(value) ? response.GetData() : nullptr;
}

void Card(benchmark::State& state, CNullHost& host, QWidget& window, bool fromText) {
    const std::string text = kAnswer;
    CSlot slot;
    for (auto _ : state) {
        CZRAdModelList* list = fromText ? nullptr : ListOf(text);

        const double begin = ThreadSeconds();
        slot.OnRequestAdSucceeded(fromText ? ListOf(text) : list, 5);
        state.SetIterationTime(ThreadSeconds() - begin);

        const auto* card = window.findChild<CZRAdBottomPopupView*>();
        if (!card || !card->isHidden()) {
            state.SkipWithError("There is no hidden card");
            return;
        }
        slot.DeleteAdPopupView();
        slot.SetAdModelList(nullptr);
        host.time.Settle();
    }
}

void Bare(benchmark::State& state, CNullHost& host, QWidget& window) {
    for (auto _ : state) {
        const double begin = ThreadSeconds();
        auto* card = new QWidget(&window);
        card->setFixedSize(kAdBottomPopupSize);
        card->setVisible(false);
        auto* picture = new ZRWebImageWidget(card);
        picture->setFixedSize(kAdBottomPopupSize);
        auto* button = new ZIconButton(card);
        button->setIconButtonSize(QSize(24, 24));
        button->setSvgIconName(ZResource::icon_close_16);
        button->move(324, 12);
        card->move(160, 400);
        state.SetIterationTime(ThreadSeconds() - begin);

        card->deleteLater();
        host.time.Settle();
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bench::COffscreen application(argv, new CVirtualEventDispatcher);

    CNullHost host{std::string()};
    QWidget window;
    window.resize(1440, 900);
    CScriptedMainFrame mainFrame;
    mainFrame.Offer(&window);
    mainFrame.SetTabKey(20001);

    const auto card = [&](bool fromText) {
        return [&, fromText](benchmark::State& state) { Card(state, host, window, fromText); };
    };
    benchmark::RegisterBenchmark(kCard, card(false))->UseManualTime();
    benchmark::RegisterBenchmark(kText, card(true))->UseManualTime();
    benchmark::RegisterBenchmark(kBare, [&](benchmark::State& state) { Bare(state, host, window); })->UseManualTime();
    return bench::RunComparisons(argc, argv, {{kCard, kBare, 2.8}, {kText, kBare, 0}});
}
