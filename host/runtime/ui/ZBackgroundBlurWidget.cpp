#include "ui/ZBackgroundBlurWidget.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QThreadPool>
#include <QVector>
#include <cmath>
#include <mutex>
#include <typeinfo>

#include "ui/ImageBlur.h"
#include "ui/KitPaint.h"

using zrstdui::image_blur::WidgetPainterBufferSource;

namespace {

constexpr double kSigmaOfRadius = 0.615;
constexpr double kLargestSigma = 100.0;
// Up to this size an image is blurred inside the paint event, within few milliseconds.
constexpr qint64 kSmallPixels = 1'500'000;
// A larger image is taken, and shown, in bands of about this size.
constexpr qint64 kBandPixels = 500'000;
// A multiple of it is a whole number of device pixels at all usual ratios.
constexpr int kQuarters = 4;

// While a source is painted, no blur widget paints itself, also no other that is inside the source: two of them
// would show each other without end. The source's paint events are no news then.
int g_nGrabs = 0;

struct SGrab {
    SGrab() { ++g_nGrabs; }
    ~SGrab() { --g_nGrabs; }
    Q_DISABLE_COPY(SGrab)
};

/// The buffer that sources are painted to. All blur widgets share one.
class CScratch {
public:
    QImage Of(const QSize& size, QImage::Format format) {
        const size_t bytes = size_t(size.width()) * size_t(size.height()) * sizeof(quint32);
        if (m_bits.size() < bytes) {
            m_bits.resize(bytes);
        }
        return {m_bits.data(), size.width(), size.height(), int(size.width() * sizeof(quint32)), format};
    }

    static std::shared_ptr<CScratch> Instance() {
        static std::weak_ptr<CScratch> instance;
        std::shared_ptr<CScratch> shared = instance.lock();
        if (!shared) {
            shared = std::make_shared<CScratch>();
            instance = shared;
        }
        return shared;
    }

private:
    std::vector<uchar> m_bits;
};

bool IsOpaque(const QWidget* widget) {
    return widget->isWindow() || widget->testAttribute(Qt::WA_OpaquePaintEvent) ||
           (widget->autoFillBackground() && widget->palette().brush(widget->backgroundRole()).isOpaque());
}

bool IsInside(const QWidget* widget, const QWidget* ancestor) {
    return widget == ancestor || ancestor->isAncestorOf(widget);
}

/// Paints a source without the mask, over the backgrounds of its ancestors where it is not opaque itself.
class CSourcePainter {
public:
    /// `origin` is the place of the image's corner in the source's window.
    CSourcePainter(QImage& image, const QPoint& origin, const QWidget* mask)
        : m_image(image), m_origin(origin), m_pMask(mask) {}

    /// Paints an area of the source's window.
    void Paint(QWidget* source, const QRect& area) {
        QVector<QWidget*> chain{source};
        while (!IsOpaque(chain.last())) {
            chain.append(chain.last()->parentWidget());
        }
        if (chain.last()->testAttribute(Qt::WA_TranslucentBackground)) {
            m_image.fill(Qt::transparent);
        } else if (!IsFilledBy(chain.last(), area)) {
            m_image.fill(source->palette().color(QPalette::Window));
        }
        while (chain.size() > 1) {
            PaintAlone(chain.takeLast(), area);
        }
        if (source->isVisibleTo(source->window())) {
            PaintTree(source, area);
        }
    }

private:
    static bool IsFilledBy(const QWidget* widget, const QRect& area) {
        return QRect(widget->mapTo(widget->window(), QPoint()), widget->size()).contains(area);
    }

    void PaintTree(QWidget* widget, const QRect& area) {
        PaintAlone(widget, area);
        const QRect within = area & Place(widget);
        const QObjectList children = widget->children();
        for (QObject* child : children) {
            auto* inner = qobject_cast<QWidget*>(child);
            if (!inner || inner == m_pMask || inner->isHidden() || inner->isWindow()) {
                continue;
            }
            if (inner->isAncestorOf(m_pMask)) {
                PaintTree(inner, within);
            } else {
                Render(inner, within, QWidget::DrawChildren);
            }
        }
    }

    /// Each `render` visits all widgets of the window, so containers without paint are left out.
    static bool IsBareContainer(const QWidget* widget) {
        return typeid(*widget) == typeid(QWidget) && !widget->isWindow() && !widget->autoFillBackground() &&
               !widget->testAttribute(Qt::WA_StyledBackground);
    }

    void PaintAlone(QWidget* widget, const QRect& area) {
        if (IsBareContainer(widget)) {
            return;
        }
        Render(widget, area, widget->isWindow() ? QWidget::DrawWindowBackground : QWidget::RenderFlags());
    }

    void Render(QWidget* widget, const QRect& area, QWidget::RenderFlags flags) {
        const QRect place = Place(widget);
        QRegion region(area & place);
        region.translate(-place.topLeft());
        if (!widget->mask().isEmpty()) {
            region &= widget->mask();
        }
        if (!region.isEmpty()) {
            const QPoint target = region.boundingRect().topLeft() + place.topLeft() - m_origin;
            widget->render(&m_image, target, region, flags);
        }
    }

    static QRect Place(const QWidget* widget) { return {widget->mapTo(widget->window(), QPoint()), widget->size()}; }

    QImage& m_image;
    const QPoint m_origin;
    const QWidget* const m_pMask;
};

/// A blur on another thread. The result is delivered only while the widget is there.
struct SJob {
    host::CImageBlur blur;
    QImage result;
    QImage::Format format = QImage::Format_RGB32;
    QColor tint;
    double sigma = 0.0;
    bool isNew = false;
};

struct SReceiver {
    std::mutex mutex;
    QObject* widget = nullptr;
};

}  // namespace

struct ZBackgroundBlurWidget::Private {
    /// All that the image depends on, except for what the source paints.
    struct SSetting {
        QPointer<QWidget> source;
        QPoint place;  // in the source's window
        QSize size;
        double ratio = 1.0;
        double sigma = 0.0;
        QImage::Format format = QImage::Format_RGB32;

        bool operator==(const SSetting& other) const {
            return source == other.source && place == other.place && size == other.size && HasBlurOf(other) &&
                   format == other.format;
        }
        bool HasBlurOf(const SSetting& other) const {
            return Pixels() == other.Pixels() && qFuzzyCompare(sigma, other.sigma);
        }
        QSize Pixels() const { return QSizeF(QSizeF(size) * ratio).toSize().expandedTo(QSize(1, 1)); }
        bool IsSmall() const { return qint64(Pixels().width()) * Pixels().height() <= kSmallPixels; }
    };

    explicit Private(ZBackgroundBlurWidget* widget) : owner(widget) { receiver->widget = widget; }
    ~Private() {
        const std::lock_guard<std::mutex> lock(receiver->mutex);
        receiver->widget = nullptr;
    }

    QWidget* Mask() const { return owner->parentWidget(); }

    QWidget* Source() const {
        const QWidget* mask = Mask();
        if (!mask) {
            return nullptr;
        }
        if (source.isGiven() && !(source.widget() && IsInside(source.widget(), mask))) {
            return source.widget();
        }
        return mask->isWindow() ? nullptr : mask->parentWidget();
    }

    // Following the source.

    void Watch(QWidget* widget) {
        widget->installEventFilter(owner);
        const QObjectList children = widget->children();
        for (QObject* child : children) {
            auto* inner = qobject_cast<QWidget*>(child);
            if (inner && inner != Mask() && !inner->isWindow()) {
                Watch(inner);
            }
        }
    }

    void Unwatch(QObject* object) {
        object->removeEventFilter(owner);
        const QObjectList children = object->children();
        for (QObject* child : children) {
            if (child->isWidgetType()) {
                Unwatch(child);
            }
        }
    }

    void WatchChain(QWidget* widget) {
        for (QWidget* next = widget; next; next = next->isWindow() ? nullptr : next->parentWidget()) {
            next->installEventFilter(owner);
            chain.append(next);
        }
    }

    void Forget() {
        for (const QPointer<QWidget>& widget : qAsConst(chain)) {
            if (widget) {
                widget->removeEventFilter(owner);
            }
        }
        chain.clear();
        if (tree) {
            Unwatch(tree);
        }
        QObject::disconnect(sourceGone);
        isWatching = false;
    }

    void Follow() {
        Forget();
        isWatching = true;
        WatchChain(Mask());
        if (QWidget* widget = Source()) {
            WatchChain(widget);
            Watch(widget);
            tree = widget;
            sourceGone = QObject::connect(widget, &QObject::destroyed, owner, [this] { PostLook(); });
        }
        suspects = owner->rect();
    }

    bool IsSeen() const {
        return owner->isVisible() && !owner->window()->isMinimized() && !owner->visibleRegion().isEmpty();
    }

    void Suspect(const QWidget* widget, const QRegion& painted) {
        const QPoint origin = widget->window() == owner->window()
                                  ? owner->mapTo(owner->window(), QPoint()) - widget->mapTo(widget->window(), QPoint())
                                  : widget->mapFromGlobal(owner->mapToGlobal(QPoint()));
        const QRegion region = painted.translated(-origin) & owner->rect();
        if (!region.isEmpty()) {
            suspects += region;
            PostLook();
        }
    }

    // Taking the image.

    /// Returns whether there is something to blur. Everything is suspect after a change of the setting.
    bool Prepare() {
        if (!isWatching) {
            Follow();
        }
        QWidget* widget = Source();
        if (!widget || !(radius > 0) || owner->size().isEmpty()) {
            setting = SSetting();
            suspects = QRegion();
            picture = QImage();
            hasPicture = false;
            return false;
        }
        SSetting now;
        now.source = widget;
        now.place = widget->window() == owner->window() ? owner->mapTo(owner->window(), QPoint())
                                                        : widget->window()->mapFromGlobal(owner->mapToGlobal(QPoint()));
        now.size = owner->size();
        now.ratio = owner->devicePixelRatioF();
        now.sigma = std::min(radius * kSigmaOfRadius, kLargestSigma) * now.ratio;
        if (widget->window()->testAttribute(Qt::WA_TranslucentBackground)) {
            now.format = QImage::Format_ARGB32_Premultiplied;
        }
        if (!(now == setting)) {
            if (!now.HasBlurOf(setting)) {
                blur = host::CImageBlur(now.Pixels(), now.sigma);
                hasChanged = true;
            }
            setting = now;
            suspects = owner->rect();
        }
        return true;
    }

    /// Compares what is painted behind the widget so far with what was taken. If it is the same, the source's paint
    /// events were no news, and the source need not be painted a second time.
    void CompareWithScreen(QPainter& painter, const QRegion& painted) {
        const QPaintDevice* device = painter.paintEngine()->paintDevice();
        if (suspects.isEmpty() || !(QRegion(owner->rect()) - painted).isEmpty() || !IsScreen(device) ||
            device->devType() != QInternal::Image || !IsSourceOnScreen()) {
            return;
        }
        const auto* screen = static_cast<const QImage*>(device);
        const QRect area(painter.deviceTransform().map(QPoint()), setting.Pixels());
        if (screen->depth() == 32 && screen->rect().contains(area) &&
            blur.Holds(QImage(screen->constScanLine(area.top()) + area.left() * 4, area.width(), area.height(),
                              screen->bytesPerLine(), screen->format()))) {
            suspects = QRegion();
        }
    }

    bool IsScreen(const QPaintDevice* device) const {
        return owner->backingStore() && owner->backingStore()->paintDevice() == device;
    }

    /// Returns whether nothing is painted between the source and the widget. The source contains the mask, or is the
    /// sibling below it.
    bool IsSourceOnScreen() const {
        for (QWidget* widget = Mask(); IsClear(widget); widget = widget->parentWidget()) {
            if (VisibleSibling(widget, -1) == setting.source) {
                return true;
            }
            if (widget->isWindow() || VisibleSibling(widget, 1)) {
                return false;
            }
            if (widget->parentWidget() == setting.source) {
                return true;
            }
        }
        return false;
    }

    /// Returns whether the widget has no background, by one of its pixels.
    bool IsClear(QWidget* widget) const {
        QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
        pixel.fill(Qt::transparent);
        const QPoint place = owner->mapTo(widget, owner->rect().center());
        const SGrab grab;
        widget->render(&pixel, QPoint(), QRect(place, QSize(1, 1)), QWidget::RenderFlags());
        return pixel.pixel(0, 0) == 0;
    }

    /// Returns the next sibling above (1) or below (-1) that is not hidden; null if there is none.
    static const QWidget* VisibleSibling(QWidget* widget, int step) {
        if (widget->isWindow()) {
            return nullptr;
        }
        const QObjectList& siblings = widget->parentWidget()->children();
        for (int i = siblings.indexOf(widget) + step; i >= 0 && i < siblings.size(); i += step) {
            const auto* sibling = qobject_cast<const QWidget*>(siblings[i]);
            if (sibling && !sibling->isWindow() && !sibling->isHidden()) {
                return sibling;
            }
        }
        return nullptr;
    }

    /// Paints the next rows of the source that are suspect and compares them.
    void TakeBand(qint64 pixels) {
        const double ratio = setting.ratio;
        const bool isExact = qFuzzyCompare(ratio * kQuarters, std::round(ratio * kQuarters));
        QRect area = owner->rect();
        if (isExact) {
            const int unit = blur.Cell() * kQuarters;
            const QRect all = suspects.boundingRect();
            const auto below = [unit](int x) { return x / unit * unit; };
            const int left = below(all.left());
            const int top = below(all.top());
            const int right = below(all.right()) + unit;
            const auto rows =
                int(std::min<qint64>(owner->height(), qint64(double(pixels) / (double(right - left) * ratio * ratio))));
            const int bottom = std::min(below(all.bottom()) + unit, top + std::max(unit, below(rows + unit - 1)));
            area = QRect(QPoint(left, top), QPoint(right - 1, bottom - 1)) & owner->rect();
        }
        suspects -= QRegion(area);
        const QPoint at = (QPointF(area.topLeft()) * ratio).toPoint();
        const QRect pixelArea = QRect(at, (QSizeF(area.size()) * ratio).toSize()) & QRect(QPoint(), blur.Size());

        QImage image = scratch->Of(pixelArea.size(), setting.format);
        image.setDevicePixelRatio(ratio);
        {
            const SGrab grab;
            const QPoint corner = setting.place + area.topLeft();
            CSourcePainter(image, corner, Mask()).Paint(setting.source, QRect(corner, area.size()));
        }
        hasChanged = blur.Take(image, at) || hasChanged;
    }

    // Small images: at once.

    bool BlurIfChanged() {
        while (!suspects.isEmpty()) {
            TakeBand(kSmallPixels);
        }
        if (!hasChanged) {
            return false;
        }
        hasChanged = false;
        blur.Blur();
        ++blurs;
        hasPicture = false;
        return true;
    }

    void Tint(const QColor& color) {
        if (!hasPicture || pictureTint != color) {
            blur.Write(picture, setting.format, color);
            pictureTint = color;
            hasPicture = true;
        }
    }

    // Large images: a band in each turn of the event loop, then on another thread.

    /// A large image stays until the new one is there.
    void Refresh() {
        if (hasPicture && radius > 0 && !setting.IsSmall()) {
            PostLook();
        } else {
            owner->update();
        }
    }

    void PostLook() {
        if (!isLookPosted) {
            isLookPosted = true;
            QMetaObject::invokeMethod(
                owner, [this] { Look(); }, Qt::QueuedConnection);
        }
    }

    void Look() {
        isLookPosted = false;
        if (!IsSeen()) {
            return;
        }
        const bool hadPicture = hasPicture;
        if (!Prepare()) {
            if (hadPicture) {
                owner->update();
            }
        } else if (setting.IsSmall()) {
            if (BlurIfChanged() || isShowDue) {
                Show(owner->rect());
            }
        } else if (isAtWork) {
            return;  // EndJob looks again
        } else if (!suspects.isEmpty()) {
            TakeBand(kBandPixels);
            PostLook();
        } else if ((hasChanged || !hasPicture || pictureTint != blend.value())) {
            StartJob();
        } else if (!unshown.isEmpty()) {
            ShowBand();
            PostLook();
        }
    }

    void ShowBand() {
        const QRect all = unshown.boundingRect();
        const int rows = std::max(1, int(double(kBandPixels) / (all.width() * setting.ratio * setting.ratio)));
        const QRect band(all.topLeft(), QSize(all.width(), std::min(rows, all.height())));
        unshown -= QRegion(band);
        Show(band);
    }

    /// Paints the widget for a new picture. The source is painted with it, since the widget is translucent, but has not
    /// changed. Changes that wait for their paint are painted before, so that they are noticed.
    void Show(const QRect& area) {
        isShowDue = false;
        QCoreApplication::sendPostedEvents(owner->window(), QEvent::UpdateRequest);
        isShowing = true;
        owner->repaint(area);
        isShowing = false;
    }

    void StartJob() {
        isAtWork = true;
        auto job = std::make_shared<SJob>();
        job->blur = std::move(blur);
        job->result = std::move(spare);
        job->format = setting.format;
        job->tint = blend.value();
        job->isNew = hasChanged;
        job->sigma = setting.sigma;
        hasChanged = false;
        QThreadPool::globalInstance()->start([this, job, to = receiver] {
            if (job->isNew) {
                job->blur.Blur();
            }
            job->blur.Write(job->result, job->format, job->tint);
            const std::lock_guard<std::mutex> lock(to->mutex);
            if (to->widget) {
                QMetaObject::invokeMethod(
                    to->widget, [this, job] { EndJob(*job); }, Qt::QueuedConnection);
            }
        });
    }

    void EndJob(SJob& job) {
        isAtWork = false;
        blurs += job.isNew ? 1 : 0;
        if (setting.source && job.blur.Size() == setting.Pixels() && qFuzzyCompare(job.sigma, setting.sigma)) {
            blur = std::move(job.blur);
            spare = std::move(picture);
            picture = std::move(job.result);
            pictureTint = job.tint;
            hasPicture = true;
            unshown = owner->rect();
        }
        PostLook();
    }

    ZBackgroundBlurWidget* const owner;
    zr_ui_res::TResource<QColor> blend;
    double radius = 20.0;
    WidgetPainterBufferSource source;

    QVector<QPointer<QWidget>> chain;  // the mask, the source and their ancestors
    QPointer<QWidget> tree;            // the source, watched with all that is in it
    QMetaObject::Connection sourceGone;
    bool isWatching = false;

    SSetting setting;
    QRegion suspects;  // where the source may have changed
    const std::shared_ptr<CScratch> scratch = CScratch::Instance();
    host::CImageBlur blur;
    bool hasChanged = false;  // what was taken since the last blur
    quint64 blurs = 0;

    QImage picture;  // with the blend colour
    QColor pictureTint;
    bool hasPicture = false;

    bool isLookPosted = false;
    bool isShowDue = false;
    bool isShowing = false;
    bool isAtWork = false;
    QImage spare;
    QRegion unshown;
    const std::shared_ptr<SReceiver> receiver = std::make_shared<SReceiver>();
};

ZBackgroundBlurWidget::ZBackgroundBlurWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this)) {
    setFocusPolicy(Qt::NoFocus);
    host::kit::FollowTheme(this);
}

ZBackgroundBlurWidget::~ZBackgroundBlurWidget() = default;

void ZBackgroundBlurWidget::setBlendColor(zr_ui_res::TResource<QColor> color) {
    d->blend = std::move(color);
    d->Refresh();
}

void ZBackgroundBlurWidget::setBlurRadius(double radius) {
    d->radius = radius;
    d->Refresh();
}

void ZBackgroundBlurWidget::setBlurQuality(int /*quality*/) {}

void ZBackgroundBlurWidget::setPainterBufferSource(const WidgetPainterBufferSource& source) {
    if (d->source != source) {
        d->source = source;
        d->Forget();
        update();
    }
}

quint64 ZBackgroundBlurWidget::blurCount() const {
    return d->blurs;
}

bool ZBackgroundBlurWidget::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Paint:
            if (g_nGrabs == 0 && !d->isShowing && watched != parentWidget() && isVisible()) {
                d->Suspect(static_cast<QWidget*>(watched), static_cast<QPaintEvent*>(event)->region());
            }
            break;
        case QEvent::Move:
        case QEvent::Resize:
            d->PostLook();
            break;
        case QEvent::ChildAdded: {
            QObject* added = static_cast<QChildEvent*>(event)->child();
            auto* child = added->isWidgetType() ? static_cast<QWidget*>(added) : nullptr;
            const QWidget* source = d->Source();
            if (child && child != parentWidget() && !child->isWindow() && source && source->isAncestorOf(child)) {
                d->Watch(child);
            }
            break;
        }
        case QEvent::ChildRemoved:
            if (static_cast<QChildEvent*>(event)->child() != parentWidget()) {
                d->Unwatch(static_cast<QChildEvent*>(event)->child());
            }
            break;
        case QEvent::ParentChange:
            d->isWatching = false;
            d->PostLook();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

bool ZBackgroundBlurWidget::event(QEvent* event) {
    if (event->type() == QEvent::ParentChange) {
        d->isWatching = false;
    }
    return QWidget::event(event);
}

void ZBackgroundBlurWidget::paintEvent(QPaintEvent* event) {
    if (g_nGrabs > 0) {
        return;
    }
    QPainter painter(this);
    const QColor blend = d->blend.value();
    const bool isBlurring = isVisible() ? d->Prepare() : d->radius > 0 && d->Source();
    bool isWhole = d->hasPicture;
    if (isBlurring && isVisible()) {
        if (d->setting.IsSmall()) {
            d->CompareWithScreen(painter, event->region());
            const bool isNew = d->BlurIfChanged();
            d->Tint(blend);
            // A part of the widget was asked for, or another device than the screen.
            if (isNew && (!(visibleRegion() - event->region()).isEmpty() ||
                          !d->IsScreen(painter.paintEngine()->paintDevice()))) {
                d->isShowDue = true;
                d->PostLook();
            }
            isWhole = true;
        } else {
            isWhole = d->hasPicture && d->picture.size() == d->setting.Pixels();
            d->PostLook();
        }
    }
    if (isBlurring) {
        // Without an image of this size yet, a plain colour covers what is behind.
        if (!isWhole) {
            painter.fillRect(rect(), palette().color(QPalette::Window));
        }
        if (d->hasPicture) {
            d->picture.setDevicePixelRatio(d->setting.ratio);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.drawImage(QPoint(), d->picture);
            return;
        }
    }
    if (blend.isValid()) {
        painter.fillRect(rect(), blend);
    }
}

void ZBackgroundBlurWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    update();
}

void ZBackgroundBlurWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    d->isWatching = false;
}

void ZBackgroundBlurWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    d->Forget();
}

void ZBackgroundBlurWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

void ZBackgroundBlurWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->ignore();
}
