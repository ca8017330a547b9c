#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// Displays one of several slides, with one dot for each slide, and can advance by itself. Slides are numbered from 0
/// in the order in which they were added.
/// Thread: main thread.
/// Ownership: slides become children.
class ZRHOST_API ZSlideshowBase : public QWidget {
    Q_OBJECT

public:
    /// The ratio of width to height, if the ratio is kept.
    enum WidthHeightRatio : int {
        kRatio1To1 = 1,
        kRatio2To1 = 2,
        kRatio3To1 = 3,
        kRatio4To1 = 4,
        kRatio16To9 = 7,
        kRatioFree = 8,
    };

    ZSlideshowBase(QWidget* parent, WidthHeightRatio ratio);
    ~ZSlideshowBase() override;

    /// Sets whether it advances every five seconds, visible or not. It needs two slides and m_bAutomatic.
    /// The default is false.
    void setAutoSwitch(bool on);

    /// Sets whether slides keep the ratio and leave a margin; otherwise they fill the widget. The default is true.
    void setKeepRatio(bool keep);
    /// Returns whether slides keep the ratio.
    bool keepRatio() const;

    /// Returns the number of slides.
    int count() const;
    /// Returns the index of the displayed slide, or -1 without slides.
    int currentIndex() const;
    /// Displays a slide.
    /// Failure: an index without a slide changes nothing.
    void setCurrentIndex(int index);

    /// Enables automatic behaviour. Set it before setAutoSwitch.
    bool m_bAutomatic = false;

Q_SIGNALS:
    /// Emitted when another slide is displayed. For the first slide `oldIndex` is -1, inside the call that adds it.
    void currentChanged(int newIndex, int oldIndex);

protected:
    /// Adds a slide without a widget.
    void AddSlide();

    /// Sets the widget of a slide. The caller deletes a previous one.
    /// Ownership: it becomes a child.
    void SetSlide(int index, QWidget* slide);

    /// Called before a slide is displayed, and for the one that follows it. Not called for the first slide.
    virtual void PrepareSlide(int index);

    /// Sets whether a slide is bare, that is without an image. A bare slide has no dots. The default is false.
    void SetBare(int index, bool bare);

    void resizeEvent(QResizeEvent* event) override;
    /// Leaves the event to the parent.
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// A slideshow of images from URLs. The dots appear with the first slide that has an image or a stand-in.
class ZRHOST_API ZSlideshow : public ZSlideshowBase {
    Q_OBJECT

public:
    /// The treatment of animated images.
    enum ImageMode : int {
        /// The first frame only.
        kStill = 0,
        kMoving = 2,
    };

    /// Creates a slideshow without slides.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    ZSlideshow(QWidget* parent, WidthHeightRatio ratio);
    ~ZSlideshow() override;

    /// Adds a slide. Its image is loaded, with up to three attempts, when the slide or the one before it is displayed.
    /// `standIn` is as for ZRWebImageWidget. `mode` is an ImageMode; any other value is treated as kStill.
    void addWebImageOrGif(const QString& url, const QString& standIn, int mode);

Q_SIGNALS:
    /// Emitted when the image of a slide is loaded for the first time. `loadCount` is the number of the attempt,
    /// from 1.
    void webImageLoadSucess(const QString& url, int index, int loadCount);
    /// Emitted when the third attempt failed.
    void webImageLoadFinalFailed(const QString& url, int index, int failedCount);

protected:
    void PrepareSlide(int index) override;

private:
    struct Images;

    void OnLoaded(int index, bool succeeded);

    const std::unique_ptr<Images> m_images;
};
