#pragma once

#include <QString>
#include <QVector>
#include <vector>

/// The market data of the pages, read from a resource.
struct SampleMarket {
    struct Index {
        QString name;
        double last = 0;
        double previous = 0;
    };
    struct Instrument {
        QString symbol;
        QString name;
        double last = 0;
        double previous = 0;
        qint64 volume = 0;
    };
    struct BookLevel {
        qint64 bidSize = 0;
        double bid = 0;
        double ask = 0;
        qint64 askSize = 0;
    };
    struct Quote {
        Instrument instrument;
        double open = 0;
        double high = 0;
        double low = 0;
        double turnover = 0;
        double marketCap = 0;
        qint64 shortVolume = 0;
        double daysToCover = 0;
        double borrowFee = 0;  // percent a year
        QVector<double> today;
        std::vector<BookLevel> book;
    };
    enum class EnRating { Buy, Hold, Reduce };
    struct Note {
        QString symbol;
        EnRating rating = EnRating::Hold;
        double target = 0;
        QString analyst;
        QString date;
        QByteArray title;  // source texts
        QByteArray summary;
    };
    struct Headline {
        QString time;
        QString source;
        QString symbol;  // empty: of the market as a whole
        QByteArray title;
    };
    struct Position {
        Instrument instrument;
        qint64 quantity = 0;
        double cost = 0;
    };
    struct Sector {
        QByteArray title;
        double last = 0;
        double previous = 0;
        int advancing = 0;
        int declining = 0;
        double turnover = 0;
        QString leader;  // a symbol
    };
    struct Alert {
        Instrument instrument;
        bool above = false;  // false: below
        double price = 0;
    };
    enum class EnOrderState { Working, Filled, Cancelled };
    struct Order {
        QString time;
        QString symbol;
        bool isBuy = false;
        qint64 quantity = 0;
        double price = 0;
        EnOrderState state = EnOrderState::Working;
    };

    std::vector<Index> indices;
    std::vector<Instrument> instruments;
    Quote quote;
    std::vector<Note> notes;
    std::vector<Headline> headlines;
    std::vector<Position> positions;
    std::vector<Sector> sectors;
    std::vector<Alert> alerts;
    std::vector<Order> orders;
    double cash = 0;
    double buyingPower = 0;
    double marginUsed = 0;

    /// Reads the resource. A failure is logged and returns an empty market.
    static SampleMarket Load();

    /// Returns false with the reason if the JSON is malformed.
    static bool Read(const std::string& json, SampleMarket& market, std::string& error);
};

/// Formats of numbers in the pages.
namespace figures {

QString Price(double value);
QString Signed(double value);
QString Percent(double value, double base);
QString Whole(double value);
/// Large numbers are written in millions or billions.
QString Short(double value);
/// The text in place of a figure behind a mask.
QString Concealed();

}  // namespace figures
