#pragma once

#include <QVector>
#include <QWidget>

/// The day's prices as a line, against the close of the day before.
class CPriceChart : public QWidget {
public:
    CPriceChart(QVector<double> prices, double previousClose, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QVector<double> m_prices;
    const double m_previousClose;
};
