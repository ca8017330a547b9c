#include "support/Click.h"

#include <gtest/gtest.h>
#include <private/qguiapplication_p.h>

#include <QPointer>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {

std::string Name(const QWidget* widget) {
    return std::string(widget->metaObject()->className()) + " \"" + widget->objectName().toStdString() + "\"";
}

/// Why a hand can't hit the widget; empty if it can.
std::string Hindrance(QWidget* widget, const QPoint& point) {
    QWidget* top = widget->window();
    if (!widget->isVisible()) {
        return "is hidden";
    }
    if (!widget->isEnabled()) {
        return "is disabled";
    }
    if (!top->windowHandle() || !top->rect().contains(point) || widget->rect().isEmpty()) {
        return "is outside of its window";
    }
    QWidget* hit = top->childAt(point);
    if (hit && hit != widget && !widget->isAncestorOf(hit)) {
        return "is covered by " + Name(hit);
    }
    if (!hit && widget != top) {
        return "is out of sight at its middle";
    }
    QWindow* blocking = nullptr;
    if (QGuiApplicationPrivate::instance()->isWindowBlocked(top->windowHandle(), &blocking)) {
        return "is held back by the modal window " + blocking->objectName().toStdString();
    }
    return std::string();
}

}  // namespace

void Click(QWidget* widget) {
    if (!widget) {
        ADD_FAILURE() << "There is no widget to click";
        return;
    }
    // A pending layout would move the widget between press and release. A request of a child leads to one of its
    // parent.
    for (int round = 0; round < 8; ++round) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    const QPoint point = widget->mapTo(widget->window(), widget->rect().center());
    const std::string hindrance = Hindrance(widget, point);
    if (!hindrance.empty()) {
        ADD_FAILURE() << "The click would not hit: " << Name(widget) << " " << hindrance;
        return;
    }
    const QPointer<QWindow> window = widget->window()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, point);
    if (window) {
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, point);
    }
}
