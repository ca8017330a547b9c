#include "pages/AlertsPage.h"

#include <QVBoxLayout>

#include "AdBannerSlot.h"
#include "SampleMarket.h"
#include "pages/SampleTable.h"

namespace {

constexpr int kAdPosition = 9;

}  // namespace

CAlertsPage::CAlertsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                         const CAds& ads, QWidget* parent)
    : CPage(page, entries, parent) {
    Body()->addWidget(new CAdBannerSlot(kAdPosition, ads, this));
    auto* table = new CSampleTable("AlertsTable",
                                   {{texts::kSymbol, false},
                                    {texts::kName, false},
                                    {texts::kCondition, false},
                                    {texts::kAlertPrice, true},
                                    {texts::kLastPrice, true},
                                    {texts::kAlertDistance, true},
                                    {texts::kState, false}},
                                   1, this);
    for (const SampleMarket::Alert& alert : market.alerts) {
        const double last = alert.instrument.last;
        const bool reached = alert.above ? last >= alert.price : last <= alert.price;
        table->AddRow({{alert.instrument.symbol, theme::kAccent},
                       {alert.instrument.name},
                       {QString(), theme::kMuted, alert.above ? texts::kRisesAbove : texts::kFallsBelow},
                       {figures::Price(alert.price)},
                       {figures::Price(last), theme::OfChange(last - alert.instrument.previous)},
                       {figures::Percent(alert.price, last), theme::kMuted},
                       {QString(), reached ? theme::kUp : theme::kWarning,
                        reached ? texts::kAlertReached : texts::kAlertWaiting}});
    }
    Body()->addWidget(table, 1);
}
