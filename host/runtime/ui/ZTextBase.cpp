#include "ui/ZTextBase.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/TextBase.h"

ZTextBase::ZTextBase(Private* state, QWidget* parent) : QWidget(parent), d(state) {
    setFocusPolicy(Qt::NoFocus);
    host::kit::FollowTheme(this);
}

ZTextBase::~ZTextBase() = default;

ZTextBase::Private* ZTextBase::state() const {
    return d.get();
}

QString ZTextBase::text() const {
    return d->text;
}

QSize ZTextBase::sizeHint() const {
    ensurePolished();
    return d->Hint(*this);
}

QSize ZTextBase::minimumSizeHint() const {
    ensurePolished();
    return d->MinimumHint(*this);
}

bool ZTextBase::hasHeightForWidth() const {
    return d->IsWrapped();
}

int ZTextBase::heightForWidth(int width) const {
    return d->IsWrapped() ? d->HeightAt(*this, width) : -1;
}

void ZTextBase::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    d->Paint(painter, *this);
}

void ZTextBase::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->Lay(*this);
}

void ZTextBase::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::LayoutDirectionChange) {
        d->Refresh(*this);
    }
    update();
}
