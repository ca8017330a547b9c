#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// The result of a load.
enum ZRImageLoadStatus : int {
    /// No image: a refused or empty URL, no answer, or bytes that are no valid image.
    kImageLoadFailed = 2,
    /// The image is displayed.
    kImageLoadSucceeded = 4,
};

/// The rounded corners.
enum ZRCornerRadiusType : int {
    kCornersNone = 0,
    /// The two upper corners.
    kCornersTop = 1,
    kCornersAll = 2,
};

/// Shows an image from a URL, animated or not, scaled to cover the widget, aspect ratio kept, centred. Mouse presses
/// reach the parent.
/// Thread: main thread. Other threads fetch, decode and scale the image.
class ZRHOST_API ZRWebImageWidget : public QWidget {
    Q_OBJECT

public:
    /// Creates an empty widget.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZRWebImageWidget(QWidget* parent = nullptr);
    ~ZRWebImageWidget() override;

    /// Starts a load, also of the URL that is displayed. It cancels a running load without a signal. The current image
    /// stays until the new one is ready. `standIn` is a name of ZResource that an empty widget displays; empty for
    /// none.
    void SetUrl(const QString& url, const QString& standIn);

    /// Sets whether an animated image is animated, from the next SetUrl on. The default is true.
    void SetMoving(bool moving);

    /// Sets the radii in pixels, horizontal and vertical.
    void SetRoundedCorner(ZRCornerRadiusType type, double xRadius, double yRadius);

Q_SIGNALS:
    /// Emitted once for each SetUrl that no other SetUrl replaced, later, with the result.
    /// A slot may call SetUrl or delete the widget.
    void ImageLoadStatusSignal(const QString& url, ZRImageLoadStatus status);

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Leave the event to the parent.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
