#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// One slide of several, with a dot for each over it, that goes on by itself. Slides are numbered from 0 as they were
/// added. Main thread.
class ZRHOST_API ZSlideshowBase : public QWidget {
    Q_OBJECT

public:
    /// Width to height, where the ratio is kept.
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

    /// Whether it goes on by itself, every five seconds, seen or not, once there are two slides and m_bAutomatic
    /// is set. Off from the beginning.
    void setAutoSwitch(bool on);

    /// Whether slides keep the ratio and leave a rim; they fill the widget otherwise. On from the beginning.
    void setKeepRatio(bool keep);
    bool keepRatio() const;

    int count() const;
    /// -1 without slides.
    int currentIndex() const;
    /// A number that no slide has changes nothing.
    void setCurrentIndex(int index);

    /// Whether it may do anything by itself; to be set before setAutoSwitch.
    bool m_bAutomatic = false;

Q_SIGNALS:
    /// Another slide is shown; the first one comes with -1 as the old, inside the call that adds it.
    void currentChanged(int newIndex, int oldIndex);

protected:
    /// Adds a slide, which becomes a child.
    void AddSlide(QWidget* slide);

    /// A slide that has nothing to show has no dots over it either. None is bare from the beginning.
    void SetBare(int index, bool bare);

    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// A slideshow of pictures from the web. The dots come with the first slide that has its picture, or a stand-in.
class ZRHOST_API ZSlideshow : public ZSlideshowBase {
    Q_OBJECT

public:
    /// What is done with a picture that moves.
    enum ImageMode : int {
        kStill = 0,
        kMoving = 2,
    };

    ZSlideshow(QWidget* parent, WidthHeightRatio ratio);
    ~ZSlideshow() override;

    /// Adds a slide and begins to load its picture. `standIn` as for ZRWebImageWidget.
    /// `mode` is an ImageMode; any other value is as kStill.
    void addWebImageOrGif(const QString& url, const QString& standIn, int mode);

Q_SIGNALS:
    /// The picture of the slide with that index is in, at the attempt with that number, from 1.
    void webImageLoadSucess(const QString& url, int index, int loadCount);
    /// All attempts, of which there are three, have failed.
    void webImageLoadFinalFailed(const QString& url, int index, int failedCount);
};
