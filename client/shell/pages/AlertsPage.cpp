#include "pages/AlertsPage.h"

#include <QVBoxLayout>

#include "AdBannerSlot.h"
#include "SampleMarket.h"
#include "pages/SampleTable.h"

CAlertsPage::CAlertsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                         const CAds& ads, QWidget* parent)
    : CPage(page, entries, parent) {
    Body()->addWidget(new CAdBannerSlot(ZRAdPositionAlertsBanner, ads, this));
    auto* table = new CSampleTable("AlertsTable",
                                   {{QT_TRANSLATE_NOOP("Pages", "Symbol"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Name"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Condition"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Alert price"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Last"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Distance"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "State"), false}},
                                   1, this);
    for (const SampleMarket::Alert& alert : market.alerts) {
        const double last = alert.instrument.last;
        const bool reached = alert.above ? last >= alert.price : last <= alert.price;
        table->AddRow(
            {{alert.instrument.symbol, theme::kAccent},
             {alert.instrument.name},
             {QString(), theme::kMuted,
              alert.above ? QT_TRANSLATE_NOOP("Pages", "Rises above") : QT_TRANSLATE_NOOP("Pages", "Falls below")},
             {figures::Price(alert.price)},
             {figures::Price(last), theme::OfChange(last - alert.instrument.previous)},
             {figures::Percent(alert.price, last), theme::kMuted},
             {QString(), reached ? theme::kUp : theme::kWarning,
              reached ? QT_TRANSLATE_NOOP("Pages", "Reached") : QT_TRANSLATE_NOOP("Pages", "Waiting")}});
    }
    Body()->addWidget(table, 1);
}
