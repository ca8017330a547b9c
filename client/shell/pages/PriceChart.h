#pragma once

#include <QVector>
#include <QWidget>

/// Draws the day's prices as a line, relative to the previous close.
class CPriceChart : public QWidget {
public:
    CPriceChart(QVector<double> prices, double previousClose, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QVector<double> m_prices;
    const double m_previousClose;
};
