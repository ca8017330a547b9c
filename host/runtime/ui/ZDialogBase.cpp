#include "ui/ZDialogBase.h"

#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>

struct ZDialogBase::Private {
    double opacity = 1.0;
};

ZDialogBase::ZDialogBase(QWidget* parent) : QWidget(parent, Qt::Window), d(std::make_unique<Private>()) {}

ZDialogBase::~ZDialogBase() = default;

// QWidget::setWindowFlag hides a visible window and moves it.
void ZDialogBase::setTopMost(bool topMost) {
    Qt::WindowFlags flags = windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, topMost);
    overrideWindowFlags(flags);
    if (QWindow* handle = windowHandle()) {
        handle->setFlag(Qt::WindowStaysOnTopHint, topMost);
    }
}

bool ZDialogBase::isTopMost() const {
    return windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

void ZDialogBase::setKeepTop(bool keepTop) {
    setTopMost(keepTop);
}

void ZDialogBase::setEnableShowFullScreenAuxiliary(bool /*enabled*/) {}

void ZDialogBase::setWindowOpacity(double opacity) {
    d->opacity = std::clamp(opacity, 0.0, 1.0);
    QWidget::setWindowOpacity(d->opacity);
}

double ZDialogBase::exactWindowOpacity() const {
    return d->opacity;
}

void ZDialogBase::setVisible(bool visible) {
    if (visible && isWindow()) {
        // QWidget passes the rounded opacity to a new native window.
        if (!testAttribute(Qt::WA_WState_Created)) {
            create();
        }
        windowHandle()->setOpacity(d->opacity);
    }
    QWidget::setVisible(visible);
}

void ZDialogBase::setWindowTitleText(const QString& title) {
    setWindowTitle(title);
}

void ZDialogBase::show() {
    QWidget::show();
}

void ZDialogBase::showCenter(QWidget* over, QSize size) {
    if (size.isValid()) {
        resize(size);
    }
    const QScreen* screen = over ? over->screen() : this->screen();
    const QRect available = screen->availableGeometry();
    QRect place(QPoint(), this->size());
    place.moveCenter(over ? over->window()->frameGeometry().center() : available.center());
    place.moveRight(std::min(place.right(), available.right()));
    place.moveBottom(std::min(place.bottom(), available.bottom()));
    place.moveLeft(std::max(place.left(), available.left()));
    place.moveTop(std::max(place.top(), available.top()));
    move(place.topLeft());
    show();
}

void ZDialogBase::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}
