#include "workbench/ads/AdComparison.h"

#include <algorithm>

#include "workbench/ads/AdTabs.h"
#include "workbench/ads/AdText.h"

namespace ad_comparison {
namespace {

using ad_lines::EnLine;
using ad_lines::ParsedLine;
using ad_text::ServerTime;

const QString kAtLeastOne = QStringLiteral("\u2265 1");

QString TitleOf(EnZRTabFrameKey tab) {
    const auto found =
        std::find_if(kTabPages.begin(), kTabPages.end(), [tab](const TabPage& page) { return page.tab == tab; });
    return found == kTabPages.end() ? QString() : QString::fromUtf8(found->page.title);
}

QString Area(int area) {
    const auto found =
        std::find_if(kAdTabs.begin(), kAdTabs.end(), [area](const AdTab& tab) { return tab.area == area; });
    return found == kAdTabs.end() ? QStringLiteral("no tab (area %1)").arg(area)
                                  : QStringLiteral("%1 (area %2)").arg(TitleOf(found->tab)).arg(area);
}

QString CurrentTab(int area, qint64 key) {
    return QStringLiteral("%1, key %2").arg(Area(area)).arg(key);
}

/// The ad's areas, from the server's answer.
QString Areas(const CAdTracker& board, const AdSlotState& slot, const QString& ad) {
    const AdRequest* request = board.Request(slot.standing);
    if (request && request->offers) {
        for (const AdOffer& offer : *request->offers) {
            if (offer.id == ad) {
                QStringList areas;
                for (const int area : offer.areas) {
                    areas << Area(area);
                }
                return areas.join(QStringLiteral(", "));
            }
        }
    }
    return QStringLiteral("not known: its answer was not seen whole");
}

Comparison Window(const AdRefusal& refusal) {
    Comparison compared{QString(), QStringLiteral("in its window"), {}};
    for (const ParsedLine& drop : refusal.dropped) {
        AdFate fate;
        fate.fate = drop.line == EnLine::TooEarly ? EnAdResult::TooEarly
                    : drop.line == EnLine::Over   ? EnAdResult::Over
                                                  : EnAdResult::Expired;
        fate.limitS = drop.Number(1);
        compared.actual = ServerTime(drop.Number(0));
        compared.each.push_back({drop.values[4], ad_text::Fate(fate), {}, {}});
    }
    return compared;
}

Comparison Interval(const ParsedLine& said) {
    return {
        ServerTime(said.Number(0)),
        QStringLiteral("more than %1 s after the last showing, %2").arg(said.Number(2)).arg(ServerTime(said.Number(1))),
        {}};
}

Comparison Missing() {
    return {QStringLiteral("missing"), QStringLiteral("there"), {}};
}

Comparison OfAnswer(const CAdTracker& board, const AdRefusal& refusal) {
    const ParsedLine& said = refusal.said;
    switch (refusal.test) {
        case EnAdTest::Latest: {
            const QString task = QStringLiteral("Task %1");
            return {task.arg(said.values[5]), task.arg(said.values[4]), {}};
        }
        case EnAdTest::Exchange: {
            const QString result = QStringLiteral("result %1");
            return {result.arg(said.Number(1)), result.arg(0), {}};
        }
        case EnAdTest::Json:
            return {QStringLiteral("not JSON"), QStringLiteral("JSON"), {}};
        case EnAdTest::Decode: {
            const AdRequest* request = board.Request(said.values[3]);
            return {request ? QStringLiteral("unfit: %1").arg(request->words) : QString(), QStringLiteral("there"), {}};
        }
        default: {
            const QString code = QStringLiteral("code %1");
            const QString words = said.values[2].isEmpty() ? QString() : QStringLiteral(": ") + said.values[2];
            return {code.arg(said.Number(1)) + words, code.arg(0), {}};
        }
    }
}

Comparison OfPosition(const ParsedLine& said) {
    if (said.line == EnLine::ForeignPosition) {
        return {ad_text::Slot({int(said.Number(0)), int(said.Number(1))}),
                ad_text::Slot({int(said.Number(0)), int(said.Number(2))}),
                {}};
    }
    return {ad_text::Slot({int(said.Number(0)), int(said.Number(2))}),
            ad_text::Slot({int(said.Number(0)), int(said.Number(1))}),
            {}};
}

}  // namespace

QString NameOf(EnAdTest test) {
    switch (test) {
        case EnAdTest::Limit:
            return QStringLiteral("pause between requests");
        case EnAdTest::Task:
            return QStringLiteral("sent");
        case EnAdTest::Latest:
            return QStringLiteral("answer to the latest request");
        case EnAdTest::Exchange:
            return QStringLiteral("exchange");
        case EnAdTest::Json:
            return QStringLiteral("JSON");
        case EnAdTest::Decode:
            return QStringLiteral("decoded");
        case EnAdTest::Code:
            return QStringLiteral("code 0");
        case EnAdTest::List:
            return QStringLiteral("a list");
        case EnAdTest::Type:
            return QStringLiteral("type");
        case EnAdTest::Position:
            return QStringLiteral("position");
        case EnAdTest::Ads:
            return QStringLiteral("ads in it");
        case EnAdTest::Window:
            return QStringLiteral("an ad that is due");
        case EnAdTest::Popup:
            return QStringLiteral("a popup first");
        case EnAdTest::AdId:
            return QStringLiteral("ad id");
        case EnAdTest::Areas:
            return QStringLiteral("areas");
        case EnAdTest::Tab:
            return QStringLiteral("current tab");
        case EnAdTest::Interval:
            return QStringLiteral("interval since the last showing");
        case EnAdTest::Slot:
            return QStringLiteral("shared slot");
        case EnAdTest::Focus:
            return QStringLiteral("focus");
        case EnAdTest::Card:
            return QStringLiteral("picture and link");
        case EnAdTest::Interface:
            return QStringLiteral("interface of the main window");
        case EnAdTest::MainFrame:
            return QStringLiteral("main window");
        case EnAdTest::Picture:
            return QStringLiteral("picture loaded");
        case EnAdTest::View:
            return QStringLiteral("view still there");
        case EnAdTest::Layout:
            return QStringLiteral("layout");
        case EnAdTest::Caller:
            return QStringLiteral("somebody waits for it");
        case EnAdTest::BannerType:
            return QStringLiteral("banner type");
        case EnAdTest::Closed:
        case EnAdTest::Cleared:
        case EnAdTest::Withdrawn:
        case EnAdTest::Push:
            break;
    }
    return QString();
}

Comparison Of(const CAdTracker& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const ParsedLine& said = refusal.said;
    switch (refusal.test) {
        case EnAdTest::Limit:
            return {
                ServerTime(said.Number(0)),
                QStringLiteral("%1 s after the last request, %2").arg(said.Number(2)).arg(ServerTime(said.Number(1))),
                {}};
        case EnAdTest::Task:
            return {QStringLiteral("not sent: no task"), QStringLiteral("there"), {}};
        case EnAdTest::Latest:
        case EnAdTest::Exchange:
        case EnAdTest::Json:
        case EnAdTest::Decode:
        case EnAdTest::Code:
            return OfAnswer(board, refusal);
        case EnAdTest::Type:
            return {ad_text::Slot({int(said.Number(1)), int(said.Number(3))}),
                    ad_text::Slot({int(said.Number(0)), int(said.Number(2))}),
                    {}};
        case EnAdTest::Position:
            return OfPosition(said);
        case EnAdTest::Ads:
            return {QStringLiteral("0"), kAtLeastOne, {}};
        case EnAdTest::Window:
            return Window(refusal);
        case EnAdTest::Tab:
            return {CurrentTab(int(said.Number(0)), said.Number(1)), Areas(board, slot, said.values[4]), {}};
        case EnAdTest::Interval:
            return Interval(said);
        case EnAdTest::Slot:
            return {QStringLiteral("taken"), QStringLiteral("free"), {}};
        case EnAdTest::Focus:
            return {QStringLiteral("the main window has no focus"), QStringLiteral("it has the focus"), {}};
        case EnAdTest::Picture:
            return {QStringLiteral("failed at try %1: %2").arg(said.Number(2)).arg(said.values[1]),
                    QStringLiteral("loaded"),
                    {}};
        case EnAdTest::BannerType:
            return {said.values[2], QStringLiteral("\u2260 0"), {}};
        case EnAdTest::List:
        case EnAdTest::Popup:
        case EnAdTest::AdId:
        case EnAdTest::Areas:
        case EnAdTest::Card:
        case EnAdTest::Interface:
        case EnAdTest::MainFrame:
        case EnAdTest::View:
        case EnAdTest::Layout:
        case EnAdTest::Caller:
            return Missing();
        case EnAdTest::Closed:
        case EnAdTest::Cleared:
        case EnAdTest::Withdrawn:
        case EnAdTest::Push:
            break;
    }
    return {};
}

}  // namespace ad_comparison
