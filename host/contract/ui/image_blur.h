#pragma once

#include <QPointer>
#include <QWidget>

namespace zrstdui {
namespace image_blur {

/// The source of a background blur: the widget whose painting is behind the blur.
/// Thread: main thread.
class WidgetPainterBufferSource {
public:
    /// The parent of the widget that shows the blur, painted without that widget.
    WidgetPainterBufferSource() = default;
    /// The source is this widget; null means the parent.
    /// Ownership: the widget is not owned.
    explicit WidgetPainterBufferSource(QWidget* widget) : m_pWidget(widget), m_bGiven(widget != nullptr) {}

    /// Returns the widget; null for the parent, and after the widget is gone.
    QWidget* widget() const { return m_pWidget; }
    /// Returns whether a widget was given, also if it is gone.
    bool isGiven() const { return m_bGiven; }

    /// Returns whether both name the same source. A widget that is gone differs from the parent.
    friend bool operator==(const WidgetPainterBufferSource& left, const WidgetPainterBufferSource& right) {
        return left.m_bGiven == right.m_bGiven && left.m_pWidget == right.m_pWidget;
    }
    friend bool operator!=(const WidgetPainterBufferSource& left, const WidgetPainterBufferSource& right) {
        return !(left == right);
    }

private:
    QPointer<QWidget> m_pWidget;
    bool m_bGiven = false;
};

}  // namespace image_blur
}  // namespace zrstdui
