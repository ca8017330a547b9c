#include "SampleMarket.h"

#include <json/value.h>

#include <QFile>
#include <QLocale>
#include <algorithm>
#include <cmath>

#include "framework/HostLog.h"
#include "framework/JsonText.h"

// The macro declares a function of the global namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(sample);
}

namespace {

constexpr host::CHostLog kLog("Sample");

// The texts of the resource. lupdate finds them here, since it reads no JSON.
// NOLINTBEGIN(bugprone-suspicious-missing-comma)
[[maybe_unused]] constexpr const char* kTexts[] = {
    QT_TRANSLATE_NOOP("Pages", "Order intake turns the corner"),
    QT_TRANSLATE_NOOP("Pages",
                      "New lines come on stream two quarters early. We raise our estimates for the next year and see "
                      "the margin back at its old level by autumn."),
    QT_TRANSLATE_NOOP("Pages", "Steady cash, few surprises"),
    QT_TRANSLATE_NOOP("Pages",
                      "The clinics fill as planned and the dividend is covered twice. What is missing is a reason to "
                      "pay more than today's price."),
    QT_TRANSLATE_NOOP("Pages", "Freight rates weigh on the second half"),
    QT_TRANSLATE_NOOP("Pages",
                      "Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; "
                      "we take our target down."),
    QT_TRANSLATE_NOOP("Pages", "Glasshouse Software reports growth above its own guidance"),
    QT_TRANSLATE_NOOP("Pages", "Pacific 200 ends the week a little higher in quiet trade"),
    QT_TRANSLATE_NOOP("Pages", "Cygnet Robotics wins a ten-year warehouse contract"),
    QT_TRANSLATE_NOOP("Pages", "Brentfield Energy brings its third harbour wind park on line"),
    QT_TRANSLATE_NOOP("Pages", "Central bank keeps its rate, and says what would change its mind"),
    QT_TRANSLATE_NOOP("Pages", "Dromore Logistics opens a rail link to the inland terminals"),
    QT_TRANSLATE_NOOP("Pages", "Technology"),
    QT_TRANSLATE_NOOP("Pages", "Energy"),
    QT_TRANSLATE_NOOP("Pages", "Health care"),
    QT_TRANSLATE_NOOP("Pages", "Industry"),
    QT_TRANSLATE_NOOP("Pages", "Consumer goods"),
    QT_TRANSLATE_NOOP("Pages", "Materials"),
};
// NOLINTEND(bugprone-suspicious-missing-comma)

// The library throws on a member of another type. The code below does not check types; one handler catches all.
QString Text(const Json::Value& value, const char* key) {
    return QString::fromStdString(value[key].asString());
}

QByteArray SourceText(const Json::Value& value, const char* key) {
    return QByteArray::fromStdString(value[key].asString());
}

SampleMarket::Instrument ReadInstrument(const Json::Value& value) {
    return {Text(value, "symbol"), Text(value, "name"), value["last"].asDouble(), value["previous"].asDouble(),
            value["volume"].asInt64()};
}

SampleMarket::Quote ReadQuote(const Json::Value& value) {
    SampleMarket::Quote quote;
    quote.instrument = ReadInstrument(value);
    quote.open = value["open"].asDouble();
    quote.high = value["high"].asDouble();
    quote.low = value["low"].asDouble();
    quote.turnover = value["turnover"].asDouble();
    quote.marketCap = value["marketCap"].asDouble();
    quote.shortVolume = value["shortVolume"].asInt64();
    quote.daysToCover = value["daysToCover"].asDouble();
    quote.borrowFee = value["borrowFee"].asDouble();
    for (const Json::Value& price : value["today"]) {
        quote.today.push_back(price.asDouble());
    }
    for (const Json::Value& level : value["book"]) {
        quote.book.push_back(
            {level["bidSize"].asInt64(), level["bid"].asDouble(), level["ask"].asDouble(), level["askSize"].asInt64()});
    }
    return quote;
}

SampleMarket::EnRating ReadRating(const std::string& word) {
    if (word == "buy") {
        return SampleMarket::EnRating::Buy;
    }
    return word == "reduce" ? SampleMarket::EnRating::Reduce : SampleMarket::EnRating::Hold;
}

SampleMarket::EnOrderState ReadOrderState(const std::string& word) {
    if (word == "filled") {
        return SampleMarket::EnOrderState::Filled;
    }
    return word == "cancelled" ? SampleMarket::EnOrderState::Cancelled : SampleMarket::EnOrderState::Working;
}

SampleMarket::Instrument InstrumentOf(const SampleMarket& market, const QString& symbol) {
    const auto found = std::find_if(market.instruments.begin(), market.instruments.end(),
                                    [&symbol](const auto& instrument) { return instrument.symbol == symbol; });
    return found == market.instruments.end() ? SampleMarket::Instrument() : *found;
}

void ReadDay(const Json::Value& root, SampleMarket& market) {
    for (const Json::Value& sector : root["sectors"]) {
        market.sectors.push_back({SourceText(sector, "title"), sector["last"].asDouble(), sector["previous"].asDouble(),
                                  sector["advancing"].asInt(), sector["declining"].asInt(),
                                  sector["turnover"].asDouble(), Text(sector, "leader")});
    }
    for (const Json::Value& alert : root["alerts"]) {
        market.alerts.push_back(
            {InstrumentOf(market, Text(alert, "symbol")), alert["above"].asBool(), alert["price"].asDouble()});
    }
    for (const Json::Value& order : root["orders"]) {
        market.orders.push_back({Text(order, "time"), Text(order, "symbol"), order["buy"].asBool(),
                                 order["quantity"].asInt64(), order["price"].asDouble(),
                                 ReadOrderState(order["state"].asString())});
    }
}

SampleMarket ReadMarket(const Json::Value& root) {
    SampleMarket market;
    for (const Json::Value& index : root["indices"]) {
        market.indices.push_back({Text(index, "name"), index["last"].asDouble(), index["previous"].asDouble()});
    }
    for (const Json::Value& instrument : root["instruments"]) {
        market.instruments.push_back(ReadInstrument(instrument));
    }
    market.quote = ReadQuote(root["quote"]);
    for (const Json::Value& note : root["research"]) {
        market.notes.push_back({Text(note, "symbol"), ReadRating(note["rating"].asString()), note["target"].asDouble(),
                                Text(note, "analyst"), Text(note, "date"), SourceText(note, "title"),
                                SourceText(note, "summary")});
    }
    for (const Json::Value& line : root["news"]) {
        market.headlines.push_back(
            {Text(line, "time"), Text(line, "source"), Text(line, "symbol"), SourceText(line, "title")});
    }
    for (const Json::Value& held : root["positions"]) {
        market.positions.push_back(
            {InstrumentOf(market, Text(held, "symbol")), held["quantity"].asInt64(), held["cost"].asDouble()});
    }
    ReadDay(root, market);
    market.cash = root["cash"].asDouble();
    market.buyingPower = root["buyingPower"].asDouble();
    market.marginUsed = root["marginUsed"].asDouble();
    return market;
}

}  // namespace

SampleMarket SampleMarket::Load() {
    LoadResources();
    QFile file(QStringLiteral(":/sample/market.json"));
    SampleMarket market;
    std::string error;
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString().toStdString();
    } else if (Read(file.readAll().toStdString(), market, error)) {
        return market;
    }
    kLog.Error(FMT_STRING("Sample market {}: {}"), file.fileName().toStdString(), error);
    return SampleMarket();
}

bool SampleMarket::Read(const std::string& json, SampleMarket& market, std::string& error) {
    const auto root = host::ParseJson(json, error);
    if (!root) {
        return false;
    }
    try {
        market = ReadMarket(*root);
        return true;
    } catch (const std::exception& exception) {
        error = exception.what();
        return false;
    }
}

namespace figures {

QString Price(double value) {
    return QLocale(QLocale::English).toString(value, 'f', 2);
}

QString Signed(double value) {
    return (value > 0 ? QStringLiteral("+") : QString()) + Price(value);
}

QString Percent(double value, double base) {
    return base == 0 ? QStringLiteral("-") : Signed((value - base) / base * 100) + QLatin1Char('%');
}

QString Whole(double value) {
    return QLocale(QLocale::English).toString(value, 'f', 0);
}

QString Concealed() {
    return QStringLiteral("\u2013\u2013\u2013\u2013");
}

QString Short(double value) {
    if (std::abs(value) >= 1e9) {
        return Price(value / 1e9) + QStringLiteral(" B");
    }
    return std::abs(value) >= 1e6 ? Price(value / 1e6) + QStringLiteral(" M") : Whole(value);
}

}  // namespace figures
