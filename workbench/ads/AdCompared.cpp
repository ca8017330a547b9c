#include "workbench/ads/AdCompared.h"

#include <algorithm>

#include "AdTexts.h"
#include "workbench/ads/AdTabs.h"
#include "workbench/ads/AdWords.h"

namespace ad_compared {
namespace {

using ad_lines::EnLine;
using ad_lines::Said;
using ad_words::ServerTime;
using texts::Tr;

const QString kAtLeastOne = QStringLiteral("\u2265 1");

QString TitleOf(EnTab tab) {
    const auto found =
        std::find_if(kTabPages.begin(), kTabPages.end(), [tab](const TabPage& page) { return page.tab == tab; });
    return found == kTabPages.end() ? QString() : Tr(found->page.title);
}

QString Area(int area) {
    const auto found =
        std::find_if(kAdTabs.begin(), kAdTabs.end(), [area](const AdTab& tab) { return tab.area == area; });
    return found == kAdTabs.end() ? Tr(texts::kAdWhyNoTab).arg(area)
                                  : Tr(texts::kAdWhyTab).arg(TitleOf(found->tab)).arg(area);
}

QString CurrentTab(int area, qint64 key) {
    return Tr(texts::kAdWhyTabKey).arg(Area(area)).arg(key);
}

/// Where the ad may appear, by its answer.
QString Areas(const CAdBoard& board, const AdSlotState& slot, const QString& ad) {
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
    return Tr(texts::kAdWhyUnknown);
}

Compared Window(const AdRefusal& refusal) {
    Compared compared{QString(), Tr(texts::kAdWhyDue), {}};
    for (const Said& drop : refusal.dropped) {
        AdFate fate;
        fate.fate = drop.line == EnLine::TooEarly ? EnAdFate::TooEarly
                    : drop.line == EnLine::Over   ? EnAdFate::Over
                                                  : EnAdFate::Expired;
        fate.limitS = drop.Number(1);
        compared.here = ServerTime(drop.Number(0));
        compared.each.push_back({drop.values[4], ad_words::Fate(fate), {}, {}});
    }
    return compared;
}

Compared Interval(const Said& said) {
    return {ServerTime(said.Number(0)),
            Tr(texts::kAdWhyAfterInterval).arg(said.Number(2)).arg(ServerTime(said.Number(1))),
            {}};
}

Compared Missing() {
    return {Tr(texts::kAdWhyMissing), Tr(texts::kAdWhyThere), {}};
}

Compared OfAnswer(const CAdBoard& board, const AdRefusal& refusal) {
    const Said& said = refusal.said;
    switch (refusal.test) {
        case EnAdTest::Latest: {
            const QString task = Tr(texts::kHttpTask) + QStringLiteral(" %1");
            return {task.arg(said.values[5]), task.arg(said.values[4]), {}};
        }
        case EnAdTest::Exchange: {
            const QString result = Tr(texts::kAdWhyResult);
            return {result.arg(said.Number(1)), result.arg(0), {}};
        }
        case EnAdTest::Json:
            return {Tr(texts::kAdOutcomeNoJson), QStringLiteral("JSON"), {}};
        case EnAdTest::Decode: {
            const AdRequest* request = board.Request(said.values[3]);
            return {request ? Tr(texts::kAdWhyUnvalid).arg(request->words) : QString(), Tr(texts::kAdWhyThere), {}};
        }
        default: {
            const QString code = Tr(texts::kAdOutcomeRefused);
            const QString words = said.values[2].isEmpty() ? QString() : QStringLiteral(": ") + said.values[2];
            return {code.arg(said.Number(1)) + words, code.arg(0), {}};
        }
    }
}

Compared OfPosition(const Said& said) {
    if (said.line == EnLine::ForeignPosition) {
        return {ad_words::Slot({int(said.Number(0)), int(said.Number(1))}),
                ad_words::Slot({int(said.Number(0)), int(said.Number(2))}),
                {}};
    }
    return {ad_words::Slot({int(said.Number(0)), int(said.Number(2))}),
            ad_words::Slot({int(said.Number(0)), int(said.Number(1))}),
            {}};
}

}  // namespace

QString NameOf(EnAdTest test) {
    switch (test) {
        case EnAdTest::Limit:
            return Tr(texts::kAdWhyLimit);
        case EnAdTest::Task:
            return Tr(texts::kAdWhyTask);
        case EnAdTest::Latest:
            return Tr(texts::kAdWhyLatest);
        case EnAdTest::Exchange:
            return Tr(texts::kAdWhyExchange);
        case EnAdTest::Json:
            return Tr(texts::kAdWhyJson);
        case EnAdTest::Decode:
            return Tr(texts::kAdWhyDecode);
        case EnAdTest::Code:
            return Tr(texts::kAdWhyCode);
        case EnAdTest::List:
            return Tr(texts::kAdWhyList);
        case EnAdTest::Type:
            return Tr(texts::kAdWhyType);
        case EnAdTest::Position:
            return Tr(texts::kAdWhyPosition);
        case EnAdTest::Ads:
            return Tr(texts::kAdWhyAds);
        case EnAdTest::Window:
            return Tr(texts::kAdWhyWindow);
        case EnAdTest::Popup:
            return Tr(texts::kAdWhyPopup);
        case EnAdTest::AdId:
            return Tr(texts::kAdWhyAdId);
        case EnAdTest::Areas:
            return Tr(texts::kAdWhyAreas);
        case EnAdTest::Tab:
            return Tr(texts::kAdWhyCurrentTab);
        case EnAdTest::Interval:
            return Tr(texts::kAdWhyInterval);
        case EnAdTest::Slot:
            return Tr(texts::kAdWhySlot);
        case EnAdTest::Focus:
            return Tr(texts::kAdWhyFocus);
        case EnAdTest::Card:
            return Tr(texts::kAdWhyCard);
        case EnAdTest::Interface:
            return Tr(texts::kAdWhyInterface);
        case EnAdTest::MainFrame:
            return Tr(texts::kAdWhyMainFrame);
        case EnAdTest::Picture:
            return Tr(texts::kAdWhyPicture);
        case EnAdTest::View:
            return Tr(texts::kAdWhyView);
        case EnAdTest::Layout:
            return Tr(texts::kAdWhyLayout);
        case EnAdTest::Caller:
            return Tr(texts::kAdWhyCaller);
        case EnAdTest::BannerType:
            return Tr(texts::kAdWhyBannerType);
        case EnAdTest::Closed:
        case EnAdTest::Cleared:
        case EnAdTest::Withdrawn:
        case EnAdTest::Push:
            break;
    }
    return QString();
}

Compared Of(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const Said& said = refusal.said;
    switch (refusal.test) {
        case EnAdTest::Limit:
            return {ServerTime(said.Number(0)),
                    Tr(texts::kAdWhyAfterRequest).arg(said.Number(2)).arg(ServerTime(said.Number(1))),
                    {}};
        case EnAdTest::Task:
            return {Tr(texts::kAdOutcomeNoTask), Tr(texts::kAdWhyThere), {}};
        case EnAdTest::Latest:
        case EnAdTest::Exchange:
        case EnAdTest::Json:
        case EnAdTest::Decode:
        case EnAdTest::Code:
            return OfAnswer(board, refusal);
        case EnAdTest::Type:
            return {ad_words::Slot({int(said.Number(1)), int(said.Number(3))}),
                    ad_words::Slot({int(said.Number(0)), int(said.Number(2))}),
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
            return {Tr(texts::kAdWhySlotTaken), Tr(texts::kAdWhySlotFree), {}};
        case EnAdTest::Focus:
            return {Tr(texts::kAdWhyNoFocus), Tr(texts::kAdWhyHasFocus), {}};
        case EnAdTest::Picture:
            return {
                Tr(texts::kAdWhyPictureFailed).arg(said.Number(2)).arg(said.values[1]), Tr(texts::kAdWhyPictureIn), {}};
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

}  // namespace ad_compared
