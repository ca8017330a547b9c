#include "ui/ZFrameLessWnd.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>
#include <QWindow>

#include "ui/KitPaint.h"
#include "ui/ZStdTitleBar.h"

namespace {

// The strip along each edge that resizes the window.
constexpr int kEdge = 5;

Qt::CursorShape CursorOf(Qt::Edges edges) {
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge)) {
        return Qt::SizeBDiagCursor;
    }
    if (edges & (Qt::LeftEdge | Qt::RightEdge)) {
        return Qt::SizeHorCursor;
    }
    return edges ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

}  // namespace

struct ZFrameLessWnd::Private {
    QVBoxLayout* layout = nullptr;
    QPointer<ZTitleBarBase> titleBar;
    QPointer<QWidget> content;
    // While the pointer resizes a window that the platform doesn't resize.
    Qt::Edges dragged;
    QPoint pressed;
    QRect before;

    Qt::Edges EdgesAt(const QWidget& window, QPoint position) const {
        Qt::Edges edges;
        if (window.isMaximized() || window.isFullScreen()) {
            return edges;
        }
        edges.setFlag(Qt::LeftEdge, position.x() < kEdge);
        edges.setFlag(Qt::RightEdge, position.x() >= window.width() - kEdge);
        edges.setFlag(Qt::TopEdge, position.y() < kEdge);
        edges.setFlag(Qt::BottomEdge, position.y() >= window.height() - kEdge);
        return edges;
    }
};

ZFrameLessWnd::ZFrameLessWnd(QWidget* parent) : ZDialogBase(parent), d(std::make_unique<Private>()) {
    setWindowFlag(Qt::FramelessWindowHint);
    setMouseTracking(true);
    d->layout = new QVBoxLayout(this);
    d->layout->setContentsMargins(kEdge, kEdge, kEdge, kEdge);
    d->layout->setSpacing(0);
    host::kit::FollowTheme(this);
}

ZFrameLessWnd::~ZFrameLessWnd() = default;

void ZFrameLessWnd::setContentWidget(QWidget* content) {
    if (d->content == content) {
        return;
    }
    delete d->content;
    d->content = content;
    if (content) {
        // Otherwise it inherits the cursor of an edge over which the pointer came.
        content->setCursor(Qt::ArrowCursor);
        d->layout->addWidget(content, 1);
    }
}

void ZFrameLessWnd::setTitleBar(ZTitleBarBase* titleBar) {
    if (d->titleBar == titleBar) {
        return;
    }
    delete d->titleBar;
    d->titleBar = titleBar;
    if (titleBar) {
        titleBar->setCursor(Qt::ArrowCursor);
        d->layout->insertWidget(0, titleBar);
        titleBar->initUi();
    }
}

void ZFrameLessWnd::showMaxBtn(bool visible) {
    if (d->titleBar) {
        d->titleBar->showMaxBtn(visible);
    }
}

void ZFrameLessWnd::showMinBtn(bool visible) {
    if (d->titleBar) {
        d->titleBar->showMinBtn(visible);
    }
}

void ZFrameLessWnd::updateLayout() {
    d->layout->activate();
}

void ZFrameLessWnd::changeEvent(QEvent* event) {
    ZDialogBase::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        const int edge = isMaximized() || isFullScreen() ? 0 : kEdge;
        d->layout->setContentsMargins(edge, edge, edge, edge);
        if (d->titleBar) {
            d->titleBar->syncTitleBarButtonStatus();
        }
    }
}

void ZFrameLessWnd::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), host::kit::Color("surface"));
    painter.setPen(host::kit::Color("border"));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void ZFrameLessWnd::mousePressEvent(QMouseEvent* event) {
    const Qt::Edges edges = d->EdgesAt(*this, event->pos());
    if (event->button() != Qt::LeftButton || !edges) {
        ZDialogBase::mousePressEvent(event);
        return;
    }
    if (!windowHandle() || !windowHandle()->startSystemResize(edges)) {
        d->dragged = edges;
        d->pressed = event->globalPos();
        d->before = geometry();
    }
}

void ZFrameLessWnd::mouseMoveEvent(QMouseEvent* event) {
    if (!d->dragged) {
        setCursor(CursorOf(d->EdgesAt(*this, event->pos())));
        return;
    }
    const QPoint moved = event->globalPos() - d->pressed;
    const QSize least = minimumSize().expandedTo(minimumSizeHint());
    QRect place = d->before;
    if (d->dragged & Qt::LeftEdge) {
        place.setLeft(qMin(place.left() + moved.x(), place.right() + 1 - least.width()));
    }
    if (d->dragged & Qt::RightEdge) {
        place.setRight(qMax(place.right() + moved.x(), place.left() + least.width() - 1));
    }
    if (d->dragged & Qt::TopEdge) {
        place.setTop(qMin(place.top() + moved.y(), place.bottom() + 1 - least.height()));
    }
    if (d->dragged & Qt::BottomEdge) {
        place.setBottom(qMax(place.bottom() + moved.y(), place.top() + least.height() - 1));
    }
    setGeometry(place);
}

void ZFrameLessWnd::mouseReleaseEvent(QMouseEvent* event) {
    d->dragged = {};
    ZDialogBase::mouseReleaseEvent(event);
}

void ZFrameLessWnd::leaveEvent(QEvent* event) {
    unsetCursor();
    ZDialogBase::leaveEvent(event);
}
