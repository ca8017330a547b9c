#include "SampleMarket.h"

#include "Translation.h"
#include "core/lang.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class SampleMarketTest : public ScriptedHostTest {
protected:
    /// A text of the resource is translated only if it is also in the list for lupdate.
    static bool IsText(const QByteArray& source) {
        return translation::PageText(source.constData()) != QString::fromUtf8(source);
    }

    const CTranslation japanese{core::lang::kLanguageJapanese};
};

}  // namespace

TEST_F(SampleMarketTest, TheResourceFillsAllPages) {
    const SampleMarket market = SampleMarket::Load();

    EXPECT_THAT(market.indices, SizeIs(3));
    EXPECT_THAT(market.instruments, SizeIs(Ge(10u)));
    EXPECT_THAT(market.quote.book, SizeIs(5));
    EXPECT_THAT(market.quote.today, SizeIs(Ge(2)));
    for (const SampleMarket::Note& note : market.notes) {
        EXPECT_TRUE(IsText(note.title) && IsText(note.summary)) << note.symbol.toStdString();
    }
    for (const SampleMarket::Headline& headline : market.headlines) {
        EXPECT_TRUE(IsText(headline.title)) << headline.title.toStdString();
    }
    for (const SampleMarket::Position& position : market.positions) {
        EXPECT_FALSE(position.instrument.name.isEmpty());
    }
    EXPECT_THAT(market.positions, Not(IsEmpty()));
    EXPECT_THAT(market.sectors, SizeIs(6));
    for (const SampleMarket::Sector& sector : market.sectors) {
        EXPECT_TRUE(IsText(sector.title)) << sector.title.toStdString();
    }
    EXPECT_THAT(market.alerts, Not(IsEmpty()));
    for (const SampleMarket::Alert& alert : market.alerts) {
        EXPECT_FALSE(alert.instrument.name.isEmpty());
    }
    EXPECT_THAT(market.orders, Contains(Field(&SampleMarket::Order::state, SampleMarket::EnOrderState::Filled)));
    EXPECT_THAT(market.orders, Contains(Field(&SampleMarket::Order::state, SampleMarket::EnOrderState::Working)));
    EXPECT_THAT(market.orders, Contains(Field(&SampleMarket::Order::state, SampleMarket::EnOrderState::Cancelled)));
    EXPECT_GT(market.buyingPower, market.cash);
}

TEST_F(SampleMarketTest, AMemberOfAnotherTypeIsRefusedWithAReason) {
    for (const char* json :
         {"", "[]", "{\"indices\":[7]}", "{\"cash\":\"much\"}", "{\"instruments\":[{\"volume\":1.5e300}]}"}) {
        SampleMarket market;
        std::string error;
        EXPECT_FALSE(SampleMarket::Read(json, market, error)) << json;
        EXPECT_FALSE(error.empty()) << json;
    }
}

TEST_F(SampleMarketTest, FiguresAreWrittenAsTheMarketDoes) {
    EXPECT_EQ(figures::Price(1234.5), QStringLiteral("1,234.50"));
    EXPECT_EQ(figures::Signed(0.5), QStringLiteral("+0.50"));
    EXPECT_EQ(figures::Signed(-0.5), QStringLiteral("-0.50"));
    EXPECT_EQ(figures::Signed(0), QStringLiteral("0.00"));
    EXPECT_EQ(figures::Percent(110, 100), QStringLiteral("+10.00%"));
    EXPECT_EQ(figures::Percent(1, 0), QStringLiteral("-"));
    EXPECT_EQ(figures::Short(12'840'300), QStringLiteral("12.84 M"));
    EXPECT_EQ(figures::Short(2.3387e9), QStringLiteral("2.34 B"));
    EXPECT_EQ(figures::Short(950), QStringLiteral("950"));
}
