#include "pages/AccountPage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/SampleTable.h"

namespace {

struct StateLook {
    texts::EnText word;
    theme::ColorName color;
};

StateLook LookOf(SampleMarket::EnOrderState state) {
    switch (state) {
        case SampleMarket::EnOrderState::Filled:
            return {texts::kOrderFilled, theme::kUp};
        case SampleMarket::EnOrderState::Cancelled:
            return {texts::kOrderCancelled, theme::kMuted};
        case SampleMarket::EnOrderState::Working:
            break;
    }
    return {texts::kOrderWorking, theme::kWarning};
}

}  // namespace

CAccountPage::CAccountPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                           QWidget* parent)
    : CPage(page, entries, parent) {
    AddFigures({{texts::kBuyingPower, figures::Price(market.buyingPower)},
                {texts::kMarginUsed, figures::Price(market.marginUsed)},
                {texts::kCash, figures::Price(market.cash)}});
    auto* table = new CSampleTable("OrdersTable",
                                   {{texts::kLogTime, false},
                                    {texts::kSymbol, false},
                                    {texts::kSide, false},
                                    {texts::kQuantity, true},
                                    {texts::kOrderPrice, true},
                                    {texts::kState, false}},
                                   1, this);
    for (const SampleMarket::Order& order : market.orders) {
        const StateLook look = LookOf(order.state);
        table->AddRow({{order.time, theme::kMuted},
                       {order.symbol, theme::kAccent},
                       {QString(), order.isBuy ? theme::kUp : theme::kDown, order.isBuy ? texts::kBuy : texts::kSell},
                       {figures::Whole(double(order.quantity))},
                       {figures::Price(order.price)},
                       {QString(), look.color, look.word}});
    }
    Body()->addWidget(NewLabel("section", texts::kTodaysOrders, this));
    Body()->addWidget(table, 1);
}
