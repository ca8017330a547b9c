#include "ui/ZStdTitleBar.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QToolTip>
#include <QWindow>
#include <optional>

#include "core/langx.h"
#include "ui/ZIconButton.h"
#include "ui/ZResource.h"

namespace {

constexpr QSize kButtonSize(32, 28);
constexpr int kButtonMargin = 8;
constexpr int kBarHeight = 36;

}  // namespace

struct ZTitleBarBase::Private {
    ZIconButton* minimise = nullptr;
    ZIconButton* maximise = nullptr;
    ZIconButton* close = nullptr;
    // Where the pointer took a window that the platform doesn't move.
    std::optional<QPoint> held;
};

ZTitleBarBase::ZTitleBarBase(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFixedHeight(kBarHeight);
}

ZTitleBarBase::~ZTitleBarBase() = default;

void ZTitleBarBase::initUi() {
    if (d->close) {
        return;
    }
    auto* bar = new QHBoxLayout(this);
    bar->setContentsMargins(0, 0, 4, 0);
    bar->setSpacing(0);
    if (QWidget* custom = createCustomWidget()) {
        bar->addWidget(custom, 1);
    } else {
        bar->addStretch(1);
    }
    const auto add = [&](const char* icon, const QString& name) {
        auto* button = new ZIconButton(this);
        button->setIconButtonSize(kButtonSize);
        button->setIconMargins(kButtonMargin);
        button->setSvgIconName(QString::fromLatin1(icon));
        button->setAccessibleName(name);
        button->setToolTip(name);
        bar->addWidget(button);
        return button;
    };
    d->minimise = add("icon_window_minimise_12", core::langx::tr(900012, "Minimise"));
    d->maximise = add("icon_window_maximise_12", QString());
    d->close = add(ZResource::icon_close_16, core::langx::tr(900015, "Close"));
    d->minimise->hide();
    d->maximise->hide();
    connect(d->minimise, &ZIconButton::clicked, this, [this] { window()->showMinimized(); });
    connect(d->maximise, &ZIconButton::clicked, this,
            [this] { window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized); });
    connect(d->close, &ZIconButton::clicked, this, [this] { window()->close(); });
    syncTitleBarButtonStatus();
}

QWidget* ZTitleBarBase::createCustomWidget() {
    return nullptr;
}

ZIconButton* ZTitleBarBase::closeButton() const {
    return d->close;
}

void ZTitleBarBase::showMaxBtn(bool visible) {
    if (d->maximise) {
        d->maximise->setVisible(visible);
    }
}

void ZTitleBarBase::showMinBtn(bool visible) {
    if (d->minimise) {
        d->minimise->setVisible(visible);
    }
}

void ZTitleBarBase::syncTitleBarButtonStatus() {
    if (!d->maximise) {
        return;
    }
    const bool maximised = window()->isMaximized();
    const QString name = maximised ? core::langx::tr(900014, "Restore") : core::langx::tr(900013, "Maximise");
    d->maximise->setSvgIconName(maximised ? QStringLiteral("icon_window_restore_12")
                                          : QStringLiteral("icon_window_maximise_12"));
    d->maximise->setAccessibleName(name);
    d->maximise->setToolTip(name);
}

void ZTitleBarBase::hideToolTip() {
    QToolTip::hideText();
}

bool ZTitleBarBase::isDraggable(QWidget* widget) {
    return !qobject_cast<QAbstractButton*>(widget);
}

bool ZTitleBarBase::eventFilter(QObject* watched, QEvent* event) {
    return QWidget::eventFilter(watched, event);
}

void ZTitleBarBase::onLeftBtnDown() {
    QWindow* handle = window()->windowHandle();
    if (!handle || !handle->startSystemMove()) {
        d->held = QCursor::pos() - window()->pos();
    }
}

// A press on a child that takes none arrives here.
void ZTitleBarBase::mousePressEvent(QMouseEvent* event) {
    QWidget* child = childAt(event->pos());
    if (event->button() != Qt::LeftButton || !isDraggable(child ? child : this)) {
        return;
    }
    onLeftBtnDown();
    if (d->held) {
        d->held = event->globalPos() - window()->pos();
    }
}

void ZTitleBarBase::mouseMoveEvent(QMouseEvent* event) {
    if (d->held && !window()->isMaximized()) {
        window()->move(event->globalPos() - *d->held);
    }
}

void ZTitleBarBase::mouseReleaseEvent(QMouseEvent* /*event*/) {
    d->held.reset();
}

void ZTitleBarBase::mouseDoubleClickEvent(QMouseEvent* event) {
    QWidget* child = childAt(event->pos());
    const bool maximises = d->maximise && !d->maximise->isHidden();
    if (event->button() == Qt::LeftButton && maximises && isDraggable(child ? child : this)) {
        d->maximise->click();
    }
}

ZStdTitleBar::ZStdTitleBar(QWidget* parent) : ZTitleBarBase(parent) {}

ZStdTitleBar::~ZStdTitleBar() = default;
