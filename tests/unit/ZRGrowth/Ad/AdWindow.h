#pragma once

#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

/// A main window which counts the presses that reach it.
class CAdWindow : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override {
        ++presses;
        QWidget::mousePressEvent(event);
    }
};

/// Presses a button at a point of the widget, through its window.
inline void PressAt(QWidget& widget, Qt::MouseButton button, const QPoint& point) {
    QWidget* top = widget.window();
    const QPoint there = widget.mapTo(top, point);
    QTest::mousePress(top->windowHandle(), button, Qt::NoModifier, there);
    if (top->windowHandle()) {
        QTest::mouseRelease(top->windowHandle(), button, Qt::NoModifier, there);
    }
}

/// Double-clicks the widget's middle with the left button, through its window.
inline void DoubleClick(QWidget& widget) {
    QWidget* top = widget.window();
    QTest::mouseDClick(top->windowHandle(), Qt::LeftButton, Qt::NoModifier, widget.mapTo(top, widget.rect().center()));
}

inline void Press(QWidget& widget, Qt::MouseButton button) {
    PressAt(widget, button, widget.rect().center());
}
