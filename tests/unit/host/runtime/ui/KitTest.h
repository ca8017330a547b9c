#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "ui/ThemePalette.h"

/// A window for kit widgets in the light theme. It counts the presses that reach it.
class KitTest : public ScriptedHostTest {
protected:
    class CWindow : public QWidget {
    public:
        int presses = 0;

    protected:
        void mousePressEvent(QMouseEvent* event) override {
            ++presses;
            QWidget::mousePressEvent(event);
        }
    };

    KitTest() {
        SetTheme(zr_ui_theme::Manager::kThemeLight);
        QPalette white;
        white.setColor(QPalette::Window, Qt::white);
        window.setPalette(white);
        window.resize(400, 300);
        // An active window gives the focus to the first widget that accepts it.
        holder.setFocusPolicy(Qt::StrongFocus);
    }

    // The pointer is shared by all cases. A button left pressed would swallow the first press of the next case.
    void TearDown() override {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            if (QGuiApplication::mouseButtons().testFlag(button)) {
                QTest::mouseRelease(window.windowHandle(), button, {}, QPoint(window.width() - 2, window.height() - 2));
            }
        }
        EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
    }

    void SetTheme(zr_ui_theme::Manager::Theme theme) {
        host::CThemeControl::Set(theme);
        bus.Forget();
    }

    static QColor Color(const char* name) {
        return host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color(name);
    }

    void Show() {
        window.show();
        window.activateWindow();
        time.Settle();
        holder.setFocus();
        const QPoint corner(window.width() - 2, window.height() - 2);
        QEnterEvent enter(corner, corner, window.mapToGlobal(corner));
        QCoreApplication::sendEvent(window.windowHandle(), &enter);
        Leave();  // the toolkit passes over a move to where the pointer has been, also in the last case's window
    }

    void MoveTo(const QPoint& point) {
        qt_handleMouseEvent(window.windowHandle(), point, window.mapToGlobal(point), Qt::NoButton, Qt::NoButton,
                            QEvent::MouseMove, Qt::NoModifier, int(time.Now()));
        time.Settle();
    }
    void Hover(QWidget* widget) { MoveTo(widget->mapTo(&window, widget->rect().center())); }
    void Leave() { MoveTo(QPoint(window.width() - 2, window.height() - 2)); }
    void Press(QWidget* widget, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(window.windowHandle(), button, {}, widget->mapTo(&window, widget->rect().center()));
    }
    void Release(QWidget* widget) {
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, widget->mapTo(&window, widget->rect().center()));
    }
    void Tab() {
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
        time.Settle();
    }

    /// The widget as it is painted in its window, in device pixels.
    QImage Look(QWidget* widget) {
        const double ratio = widget->devicePixelRatioF();
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        const QImage all = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QImage part = all.copy(QRect(place.topLeft() * ratio, place.size() * ratio));
        part.setDevicePixelRatio(1);
        return part;
    }

    /// Number of pixels with exactly this colour.
    static int Count(const QImage& image, const QColor& color) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixelColor(x, y).rgb() == color.rgb() ? 1 : 0;
            }
        }
        return count;
    }

    /// Number of pixels with about this hue and lightness, as in the strokes of letters.
    static int Near(const QImage& image, const QColor& color) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor seen = image.pixelColor(x, y);
                count += qAbs(seen.red() - color.red()) < 48 && qAbs(seen.green() - color.green()) < 48 &&
                                 qAbs(seen.blue() - color.blue()) < 48
                             ? 1
                             : 0;
            }
        }
        return count;
    }

    CWindow window;
    QWidget holder{&window};
};
