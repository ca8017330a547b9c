#include "ui/ZSlideshow.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QVector>

#include "ui/ZRWebImageWidget.h"

namespace {

constexpr int kSwitchMs = 5000;
constexpr int kAttempts = 3;

constexpr double kDotRadius = 3.0;
constexpr int kDotDistance = 14;
constexpr int kDotsHeight = 20;

/// The dots over the slides: white with a dark rim, visible on slides of any colour.
class CDots : public QWidget {
public:
    explicit CDots(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("ZSlideshowDots"));
        hide();
    }

    void Show(int count, int current, bool onBare) {
        m_nCount = count;
        m_nCurrent = current;
        setVisible(count > 1 && !onBare);
        raise();
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0, 0, 0, 90), 1));
        const double left = (width() - (m_nCount - 1) * kDotDistance) / 2.0;
        for (int i = 0; i < m_nCount; ++i) {
            painter.setBrush(QColor(255, 255, 255, i == m_nCurrent ? 255 : 130));
            painter.drawEllipse(QPointF(left + i * kDotDistance, height() / 2.0), kDotRadius, kDotRadius);
        }
    }

private:
    int m_nCount = 0;
    int m_nCurrent = -1;
};

QSize RatioOf(ZSlideshowBase::WidthHeightRatio ratio) {
    if (ratio == ZSlideshowBase::kRatioFree) {
        return {};
    }
    return ratio == ZSlideshowBase::kRatio16To9 ? QSize(16, 9) : QSize(ratio, 1);
}

}  // namespace

struct ZSlideshowBase::Private {
    Private(QWidget* owner, WidthHeightRatio kept) : ratio(RatioOf(kept)), dots(new CDots(owner)) {}

    QRect SlideRect(const QRect& all) const {
        if (!keepRatio || ratio.isEmpty()) {
            return all;
        }
        QRect rect(QPoint(), ratio.scaled(all.size(), Qt::KeepAspectRatio));
        rect.moveCenter(all.center());
        return rect;
    }

    void Place(const QRect& all) {
        const QRect rect = SlideRect(all);
        for (const QPointer<QWidget>& slide : qAsConst(slides)) {
            if (slide) {
                slide->setGeometry(rect);
            }
        }
        dots->setGeometry(rect.left(), rect.bottom() + 1 - kDotsHeight, rect.width(), kDotsHeight);
    }

    void ShowOnly(int shown) {
        if (slides[shown]) {
            slides[shown]->show();
        }
        if (current >= 0 && slides[current]) {
            slides[current]->hide();
        }
        current = shown;
        ShowDots();
    }

    void ShowDots() { dots->Show(slides.size(), current, bare.contains(current)); }

    // Restarted, so that a slide that is shown again has its full time.
    void RunClock() {
        if (autoSwitch && slides.size() > 1) {
            clock.start(kSwitchMs);
        } else {
            clock.stop();
        }
    }

    const QSize ratio;
    QVector<QPointer<QWidget>> slides;
    QSet<int> bare;
    CDots* dots;
    QTimer clock;
    int current = -1;
    bool autoSwitch = false;
    bool keepRatio = true;
};

ZSlideshowBase::ZSlideshowBase(QWidget* parent, WidthHeightRatio ratio)
    : QWidget(parent), d(std::make_unique<Private>(this, ratio)) {
    setFocusPolicy(Qt::NoFocus);
    connect(&d->clock, &QTimer::timeout, this, [this] {
        if (m_bAutomatic) {
            setCurrentIndex((d->current + 1) % d->slides.size());
        }
    });
}

ZSlideshowBase::~ZSlideshowBase() = default;

void ZSlideshowBase::setAutoSwitch(bool on) {
    d->autoSwitch = on;
    d->RunClock();
}

void ZSlideshowBase::setKeepRatio(bool keep) {
    d->keepRatio = keep;
    d->Place(rect());
}

bool ZSlideshowBase::keepRatio() const {
    return d->keepRatio;
}

int ZSlideshowBase::count() const {
    return d->slides.size();
}

int ZSlideshowBase::currentIndex() const {
    return d->current;
}

void ZSlideshowBase::setCurrentIndex(int index) {
    if (index < 0 || index >= d->slides.size() || index == d->current) {
        return;
    }
    const int old = d->current;
    d->ShowOnly(index);
    d->RunClock();
    Q_EMIT currentChanged(index, old);
}

// The signal is emitted last: a receiver may delete the slideshow.
void ZSlideshowBase::AddSlide(QWidget* slide) {
    const int index = d->slides.size();
    slide->setParent(this);
    slide->hide();
    d->slides.append(slide);
    d->Place(rect());
    if (index == 0) {
        setCurrentIndex(0);
    } else {
        d->ShowDots();
        if (!d->clock.isActive()) {
            d->RunClock();
        }
    }
}

void ZSlideshowBase::SetBare(int index, bool bare) {
    if (bare) {
        d->bare.insert(index);
    } else {
        d->bare.remove(index);
    }
    d->ShowDots();
}

void ZSlideshowBase::resizeEvent(QResizeEvent* /*event*/) {
    d->Place(rect());
}

void ZSlideshowBase::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

ZSlideshow::ZSlideshow(QWidget* parent, WidthHeightRatio ratio) : ZSlideshowBase(parent, ratio) {}

ZSlideshow::~ZSlideshow() = default;

void ZSlideshow::addWebImageOrGif(const QString& url, const QString& standIn, int mode) {
    const int index = count();
    auto* slide = new ZRWebImageWidget(this);
    slide->setObjectName(QStringLiteral("ZSlideshowSlide%1").arg(index));
    slide->SetMoving(mode == kMoving);
    connect(slide, &ZRWebImageWidget::ImageLoadStatusSignal, this,
            [this, slide, standIn, index, attempt = 0](const QString& loaded, ZRImageLoadStatus status) mutable {
                ++attempt;
                if (status == kImageLoadSucceeded) {
                    SetBare(index, false);
                    Q_EMIT webImageLoadSucess(loaded, index, attempt);
                } else if (attempt < kAttempts) {
                    slide->SetUrl(loaded, standIn);
                } else {
                    Q_EMIT webImageLoadFinalFailed(loaded, index, attempt);
                }
            });
    const QPointer<QWidget> alive(slide);
    AddSlide(slide);
    if (alive) {
        SetBare(index, standIn.isEmpty());
        slide->SetUrl(url, standIn);
    }
}
