#include "ui/ZToast.h"

#include <QEvent>
#include <QPainter>
#include <QTimer>

#include "ui/KitPaint.h"

namespace {

constexpr int kPixels = 13;
constexpr int kFromTop = 48;
constexpr int kFromSides = 16;
constexpr int kWidest = 420;
constexpr QMargins kMargins(34, 10, 16, 10);
constexpr QPoint kDotMiddle(20, 0);
constexpr double kDotRadius = 4.0;
constexpr double kRadius = 8.0;
constexpr int kTextFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap;

// By ZrStyle.
constexpr std::string_view kColors[] = {"up", "accent", "warning", "down"};

}  // namespace

struct ZToast::Private {
    ToastInfo info;
    QTimer end;

    // Centred near the upper edge, as wide as the text, limited by the parent.
    QRect PlaceIn(const QWidget& parent, const QFont& font) const {
        const int widest = qMin(kWidest, parent.width() - 2 * kFromSides) - kMargins.left() - kMargins.right();
        const QSize text = QFontMetrics(font)
                               .boundingRect(QRect(0, 0, qMax(1, widest), QWIDGETSIZE_MAX), kTextFlags, info.text)
                               .size();
        // A word longer than the available width is elided.
        const QSize size = QRect(QPoint(), text)
                               .marginsAdded(kMargins)
                               .size()
                               .boundedTo(QSize(qMax(1, parent.width() - 2 * kFromSides), QWIDGETSIZE_MAX));
        return {QPoint((parent.width() - size.width()) / 2, kFromTop), size};
    }
};

ZToast::ZToast(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setObjectName(QStringLiteral("ZToast"));
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    d->end.setSingleShot(true);
    connect(&d->end, &QTimer::timeout, this, [this] {
        hide();
        deleteLater();
    });
    if (parent) {
        parent->installEventFilter(this);
    }
    host::kit::FollowTheme(this);
}

ZToast::~ZToast() = default;

void ZToast::showToast(const ToastInfo& info) {
    d->info = info;
    d->end.start(qMax(1, info.durationMs));
    if (!parentWidget()) {
        return;
    }
    setFont(host::kit::Sized(font(), kPixels, QFont::Normal));
    setAccessibleName(info.text);
    setGeometry(d->PlaceIn(*parentWidget(), font()));
    raise();
    show();
    update();
}

bool ZToast::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize && isVisibleTo(parentWidget())) {
        setGeometry(d->PlaceIn(*parentWidget(), font()));
    }
    return QWidget::eventFilter(watched, event);
}

void ZToast::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    host::kit::PaintPlate(painter, rect(), kRadius, host::kit::Color("popup"), host::kit::Color("border"));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(host::kit::ColorIn(kColors, d->info.style));
    painter.drawEllipse(QPointF(kDotMiddle) + QPointF(0, height() / 2.0), kDotRadius, kDotRadius);
    painter.setPen(host::kit::Color("text"));
    painter.drawText(rect().marginsRemoved(kMargins), kTextFlags, d->info.text);
}
