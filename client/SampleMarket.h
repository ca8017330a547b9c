#pragma once

#include <QString>
#include <QVector>
#include <vector>

/// The market that the pages show: a file of its own in the resources, the same at each start.
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
        unsigned int titleId = 0;  // texts of the language packs
        unsigned int summaryId = 0;
    };
    struct Headline {
        QString time;
        QString source;
        QString symbol;  // empty: of the market as a whole
        unsigned int titleId = 0;
    };
    struct Position {
        Instrument instrument;
        qint64 quantity = 0;
        double cost = 0;
    };

    std::vector<Index> indices;
    std::vector<Instrument> instruments;
    Quote quote;
    std::vector<Note> notes;
    std::vector<Headline> headlines;
    std::vector<Position> positions;
    double cash = 0;

    /// Reads the resource. One that can't be read is logged and gives an empty market.
    static SampleMarket Load();

    /// False, with the reason, on JSON that is no such market.
    static bool Read(const std::string& json, SampleMarket& market, std::string& error);
};

/// Numbers as the pages write them.
namespace figures {

QString Price(double value);
QString Signed(double value);
QString Percent(double value, double base);
QString Whole(double value);
/// In millions or billions, where it is that much.
QString Short(double value);

}  // namespace figures
