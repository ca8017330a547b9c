#include "pages/AccountPage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/MembershipCard.h"
#include "pages/SampleTable.h"

namespace {

struct StateLook {
    const char* word;
    theme::ColorName color;
};

StateLook LookOf(SampleMarket::EnOrderState state) {
    switch (state) {
        case SampleMarket::EnOrderState::Filled:
            return {QT_TRANSLATE_NOOP("Pages", "Filled"), theme::kUp};
        case SampleMarket::EnOrderState::Cancelled:
            return {QT_TRANSLATE_NOOP("Pages", "Cancelled"), theme::kMuted};
        case SampleMarket::EnOrderState::Working:
            break;
    }
    return {QT_TRANSLATE_NOOP("Pages", "Working"), theme::kWarning};
}

}  // namespace

CAccountPage::CAccountPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                           const ISessionControl& session, const CPremiumRights& rights, QWidget* parent)
    : CPage(page, entries, parent) {
    AddFigures({{QT_TRANSLATE_NOOP("Pages", "Buying power"), figures::Price(market.buyingPower)},
                {QT_TRANSLATE_NOOP("Pages", "Margin used"), figures::Price(market.marginUsed)},
                {QT_TRANSLATE_NOOP("Pages", "Cash"), figures::Price(market.cash)}});
    Body()->addWidget(new CMembershipCard(session, rights, this));
    auto* table = new CSampleTable("OrdersTable",
                                   {{QT_TRANSLATE_NOOP("Pages", "Time"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Symbol"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Side"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Quantity"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Order price"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "State"), false}},
                                   1, this);
    for (const SampleMarket::Order& order : market.orders) {
        const StateLook look = LookOf(order.state);
        table->AddRow({{order.time, theme::kMuted},
                       {order.symbol, theme::kAccent},
                       {QString(), order.isBuy ? theme::kUp : theme::kDown,
                        order.isBuy ? QT_TRANSLATE_NOOP("Pages", "Buy") : QT_TRANSLATE_NOOP("Pages", "Sell")},
                       {figures::Whole(double(order.quantity))},
                       {figures::Price(order.price)},
                       {QString(), look.color, look.word}});
    }
    Body()->addWidget(NewTranslatedLabel("section", QT_TRANSLATE_NOOP("Pages", "Today's orders"), this));
    Body()->addWidget(table, 1);
}
