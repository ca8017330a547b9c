#include "pages/ResearchPage.h"

#include <QLabel>

#include "AIChatEntries.h"
#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "SampleMarket.h"
#include "TabPages.h"
#include "VipSlot.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

struct Analysis {
    const char* name;
    EnPremiumAccess right;
    ZRVipMaskType mask;
};

class ResearchPageTest : public ScriptedHostTest, public WithParamInterface<Analysis> {
protected:
    ResearchPageTest() {
        page = std::make_unique<CResearchPage>(kEntryPages[2], entries, market, rights);
        page->resize(700, 800);
        page->show();
        time.Settle();
    }

    void Refresh() {
        rights.Refresh();
        time.Settle();
    }

    QWidget* Figures() const { return page->findChild<QWidget*>(QString::fromLatin1(GetParam().name)); }
    CVipSlot* Mask() const {
        return page->findChild<CVipSlot*>(QString::fromLatin1(GetParam().name) + QStringLiteral("Mask"));
    }

    std::string Texts() const {
        QString texts;
        for (const QLabel* label : Figures()->findChildren<QLabel*>()) {
            texts += label->text();
        }
        return texts.toStdString();
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAIChatEntries entries;
    CPremiumRights rights;
    const SampleMarket market = SampleMarket::Load();
    std::unique_ptr<CResearchPage> page;
};

}  // namespace

TEST_P(ResearchPageTest, AnalysisHasNoFiguresBehindItsMask) {
    EXPECT_THAT(Texts(), ContainsRegex("[0-9]"));

    service->masks = {GetParam().right};
    Refresh();

    EXPECT_TRUE(Mask()->isVisible());
    EXPECT_EQ(service->vipCreated.back().type, GetParam().mask);
    EXPECT_EQ(Mask()->geometry(), Figures()->geometry());
    EXPECT_FALSE(Figures()->isEnabled());
    EXPECT_THAT(Texts(), Not(ContainsRegex("[0-9]")));

    service->masks.clear();
    Refresh();

    EXPECT_THAT(Texts(), ContainsRegex("[0-9]"));
    EXPECT_TRUE(Figures()->isEnabled());
}

TEST_P(ResearchPageTest, AreaIsHighEnoughForItsMask) {
    EXPECT_GE(Figures()->height(), 64);
}

INSTANTIATE_TEST_SUITE_P(Analyses, ResearchPageTest,
                         Values(Analysis{"AnalystConsensus", EnPremiumAccess_AnalystRatings, ZRVipMaskExclusive},
                                Analysis{"ShortSelling", EnPremiumAccess_short_selling_analysis,
                                         ZRVipMaskLockedCompact}),
                         [](const auto& row) { return row.param.name; });
