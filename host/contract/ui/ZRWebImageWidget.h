#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// How a load ended.
enum ZRImageLoadStatus : int {
    kImageLoadFailed = 2,
    kImageLoadSucceeded = 4,
};

/// Which corners are round.
enum ZRCornerRadiusType : int {
    kCornersNone = 0,
    kCornersTop = 1,
    kCornersAll = 2,
};

/// A picture from the web, still or moving, which fills the widget and keeps its proportions; what stands over is
/// cut on both sides alike. It is fetched, decoded and scaled elsewhere. Presses go on to the parent. Main thread.
class ZRHOST_API ZRWebImageWidget : public QWidget {
    Q_OBJECT

public:
    explicit ZRWebImageWidget(QWidget* parent = nullptr);
    ~ZRWebImageWidget() override;

    /// Begins to load, also what is shown already; a load that is under way is forgotten, without a word. What was
    /// shown stays until then. `standIn` is a name of ZResource for an empty widget; empty: nothing.
    void SetUrl(const QString& url, const QString& standIn);

    /// Whether a picture that moves does so, from the next SetUrl on; it does from the beginning.
    void SetMoving(bool moving);

    /// Radii in pixels, along and across.
    void SetRoundedCorner(ZRCornerRadiusType type, double xRadius, double yRadius);

Q_SIGNALS:
    /// Each SetUrl that no other one follows ends, later, in kImageLoadSucceeded or kImageLoadFailed, once. There are
    /// no other notices. SetUrl may be called inside, and the widget be deleted.
    void ImageLoadStatusSignal(const QString& url, ZRImageLoadStatus status);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
