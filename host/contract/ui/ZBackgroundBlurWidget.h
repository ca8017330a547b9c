#pragma once

#include <QColor>
#include <QWidget>
#include <memory>

#include "framework/export.h"
#include "ui/image_blur.h"
#include "ui/zr_ui_res.h"

/// Shows a blurred image of what is behind it, under a translucent colour. It follows scrolling, size, theme and
/// content of its source. Mouse presses reach the parent.
/// Thread: main thread. Other threads blur large images.
class ZRHOST_API ZBackgroundBlurWidget : public QWidget {
    Q_OBJECT

public:
    /// Creates a blur of the parent's content.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZBackgroundBlurWidget(QWidget* parent = nullptr);
    ~ZBackgroundBlurWidget() override;

    /// Sets the colour over the blur. The default is none.
    void setBlendColor(zr_ui_res::TResource<QColor> color);
    /// Sets the radius in pixels, which equals a Gaussian blur of sigma 0.615 times the radius. The default is 20.
    /// Failure: 0, a negative value and no number blur nothing.
    void setBlurRadius(double radius);
    /// Sets the quality. 0, the default, is the only one; other values are treated as 0.
    void setBlurQuality(int quality);
    /// Sets the source. The default is the parent.
    void setPainterBufferSource(const zrstdui::image_blur::WidgetPainterBufferSource& source);

    /// Returns how often the widget blurred, for diagnostics. It does not grow while the widget is hidden or its
    /// source unchanged.
    quint64 blurCount() const;

    /// Watches the source, to notice what changes.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    /// Leave the event to the parent.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
