#include "ui/ZSlideshow.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QVector>
#include <utility>

#include "ui/ZRWebImageWidget.h"

namespace {

constexpr int kSwitchMs = 5000;
constexpr int kAttempts = 3;

// Slides of a longer slideshow lose their images and load them again.
constexpr int kKeptSlides = 10;

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

    int Next(int index) const { return (index + 1) % slides.size(); }

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
            setCurrentIndex(d->Next(d->current));
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
    if (old >= 0) {
        PrepareSlide(index);
    }
    d->ShowOnly(index);
    if (old >= 0) {
        PrepareSlide(d->Next(index));
    }
    d->RunClock();
    Q_EMIT currentChanged(index, old);
}

// The signal is emitted last: a receiver may delete the slideshow.
void ZSlideshowBase::AddSlide() {
    d->slides.append(nullptr);
    if (d->slides.size() == 1) {
        setCurrentIndex(0);
    } else {
        d->ShowDots();
        if (!d->clock.isActive()) {
            d->RunClock();
        }
    }
}

void ZSlideshowBase::SetSlide(int index, QWidget* slide) {
    slide->setParent(this);
    slide->setGeometry(d->SlideRect(rect()));
    slide->setVisible(index == d->current);
    d->slides[index] = slide;
    d->dots->raise();
}

void ZSlideshowBase::PrepareSlide(int /*index*/) {}

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

struct ZSlideshow::Images {
    struct Image {
        QString url;
        QString standIn;
        bool moving = false;
        int attempts = 0;
        bool isReported = false;
        bool isPrepared = false;
        QPointer<ZRWebImageWidget> widget;
    };

    QVector<Image> all;
    QVector<int> prepared;  // indexes, the latest last
};

ZSlideshow::ZSlideshow(QWidget* parent, WidthHeightRatio ratio)
    : ZSlideshowBase(parent, ratio), m_images(std::make_unique<Images>()) {}

ZSlideshow::~ZSlideshow() = default;

void ZSlideshow::addWebImageOrGif(const QString& url, const QString& standIn, int mode) {
    const int index = count();
    m_images->all.append({url, standIn, mode == kMoving, 0, false, false, nullptr});
    const QPointer<QWidget> alive(this);
    AddSlide();
    if (alive) {
        SetBare(index, standIn.isEmpty());
        if (index <= currentIndex() + 1) {
            PrepareSlide(index);
        }
    }
}

// A widget that somebody deleted is not created again.
void ZSlideshow::PrepareSlide(int index) {
    Images::Image& image = m_images->all[index];
    m_images->prepared.removeOne(index);
    m_images->prepared.append(index);
    if (std::exchange(image.isPrepared, true)) {
        return;
    }
    if (m_images->prepared.size() > kKeptSlides) {
        Images::Image& oldest = m_images->all[m_images->prepared.takeFirst()];
        oldest.isPrepared = false;
        delete oldest.widget;
    }
    image.widget = new ZRWebImageWidget(this);
    image.widget->setObjectName(QStringLiteral("ZSlideshowSlide%1").arg(index));
    image.widget->SetMoving(image.moving);
    connect(
        image.widget, &ZRWebImageWidget::ImageLoadStatusSignal, this,
        [this, index](const QString&, ZRImageLoadStatus status) { OnLoaded(index, status == kImageLoadSucceeded); });
    SetBare(index, image.standIn.isEmpty());
    SetSlide(index, image.widget);
    image.widget->SetUrl(image.url, image.standIn);
}

// The signals are emitted last: a receiver may delete the slideshow.
void ZSlideshow::OnLoaded(int index, bool succeeded) {
    Images::Image& image = m_images->all[index];
    ++image.attempts;
    if (!succeeded && image.attempts < kAttempts) {
        image.widget->SetUrl(image.url, image.standIn);
        return;
    }
    if (succeeded) {
        SetBare(index, false);
    }
    if (std::exchange(image.isReported, true)) {
        return;
    }
    const QString url = image.url;
    if (succeeded) {
        Q_EMIT webImageLoadSucess(url, index, image.attempts);
    } else {
        Q_EMIT webImageLoadFinalFailed(url, index, image.attempts);
    }
}
