#include "pages/PriceChart.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "SampleMarket.h"
#include "Theme.h"

namespace {

constexpr int kScaleWidth = 58;
constexpr int kScaleLines = 4;
constexpr int kEdge = 8;

}  // namespace

CPriceChart::CPriceChart(QVector<double> prices, double previousClose, QWidget* parent)
    : QWidget(parent), m_prices(std::move(prices)), m_previousClose(previousClose) {
    setObjectName(QStringLiteral("PriceChart"));
    setMinimumHeight(120);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    theme::OnThemeChange(this, [this] { update(); });
}

void CPriceChart::paintEvent(QPaintEvent* /*event*/) {
    if (m_prices.size() < 2) {
        return;
    }
    const auto [lowest, highest] = std::minmax_element(m_prices.begin(), m_prices.end());
    const double low = std::min(*lowest, m_previousClose);
    const double span = std::max(*highest, m_previousClose) - low;
    const QRectF area = QRectF(rect()).adjusted(1, kEdge, -kScaleWidth, -kEdge);
    const auto heightOf = [&](double price) {
        return span > 0 ? area.bottom() - (price - low) / span * area.height() : area.center().y();
    };
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int line = 0; line <= kScaleLines; ++line) {
        const double price = low + span * line / kScaleLines;
        painter.setPen(QColor(theme::kLine));
        painter.drawLine(QPointF(area.left(), heightOf(price)), QPointF(area.right(), heightOf(price)));
        painter.setPen(QColor(theme::kMuted));
        painter.drawText(QRectF(area.right() + 6, heightOf(price) - 9, kScaleWidth - 6, 18),
                         Qt::AlignLeft | Qt::AlignVCenter, figures::Price(price));
    }
    painter.setPen(QPen(QColor(theme::kMuted), 1, Qt::DashLine));
    painter.drawLine(QPointF(area.left(), heightOf(m_previousClose)), QPointF(area.right(), heightOf(m_previousClose)));
    QPainterPath line;
    for (int index = 0; index < m_prices.size(); ++index) {
        const QPointF point(area.left() + area.width() * index / (m_prices.size() - 1), heightOf(m_prices[index]));
        index == 0 ? line.moveTo(point) : line.lineTo(point);
    }
    const QColor color(theme::OfChange(m_prices.back() - m_previousClose));
    QPainterPath under = line;
    under.lineTo(area.bottomRight());
    under.lineTo(area.bottomLeft());
    QLinearGradient fade(area.topLeft(), area.bottomLeft());
    fade.setColorAt(0, QColor(color.red(), color.green(), color.blue(), 70));
    fade.setColorAt(1, QColor(color.red(), color.green(), color.blue(), 0));
    painter.fillPath(under, fade);
    painter.setPen(QPen(color, 1.8));
    painter.drawPath(line);
}
