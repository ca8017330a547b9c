#include "picture/PictureDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

namespace {

// Limits for all frames together. Kept: 300 frames, the validator's maximum, of a page-wide strip at a device pixel
// ratio of 2. They need 350 MB at four bytes a pixel. Decoded: a few seconds of work.
constexpr qint64 kMaxKeptPixels = 300LL * (2 * 662) * (2 * 110);
constexpr qint64 kMaxDecodedPixels = 400'000'000;

// Many animations give no delay or a very short one. Browsers use 100 ms for these.
constexpr int kMinDelayMs = 20;
constexpr int kDefaultDelayMs = 100;

qint64 Area(const QSize& size) {
    return qint64(size.width()) * size.height();
}

/// The largest centred part with the aspect ratio of `size`.
QRect Middle(const QSize& whole, const QSize& size) {
    const QSize part = size.scaled(whole, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return {QPoint((whole.width() - part.width()) / 2, (whole.height() - part.height()) / 2), part};
}

QImage Covering(QImage image, const QSize& size) {
    image = std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                     : QImage::Format_RGB32);
    const QRect middle = Middle(image.size(), size);
    // A view instead of a copy: the picture may be large.
    const QImage part(image.constScanLine(middle.top()) + qsizetype(middle.left()) * 4, middle.width(), middle.height(),
                      int(image.bytesPerLine()), image.format());
    return part.size() == size ? part.copy() : part.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

int FrameCount(const ImageInfo& info, const QSize& size, bool moving) {
    const bool fits = info.frames * Area(size) <= kMaxKeptPixels && info.frames * Area(info.size) <= kMaxDecodedPixels;
    return moving && fits ? info.frames : 1;
}

void DecodePixels(QByteArray bytes, const ImageInfo& info, const QSize& size, bool moving,
                  const std::atomic<bool>& cancelled, Picture& picture) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, image_validator::FormatName(info.format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    // The decoder must not read another size than the validator did.
    if (Area(reader.size()) > Area(info.size)) {
        return;
    }
    const int count = FrameCount(info, size, moving);
    for (int i = 0; i < count && !cancelled; ++i) {
        QImage image;
        if (!reader.read(&image) || image.isNull()) {
            return;
        }
        const int millis = reader.nextImageDelay();
        picture.frames.push_back({Covering(std::move(image), size), millis < kMinDelayMs ? kDefaultDelayMs : millis});
    }
}

void DecodeDrawing(const QByteArray& bytes, const QSize& size, Picture& picture) {
    QSvgRenderer renderer(bytes);
    const QSizeF own = renderer.viewBoxF().isEmpty() ? QSizeF(renderer.defaultSize()) : renderer.viewBoxF().size();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (!renderer.isValid() || own.isEmpty() || image.isNull()) {
        return;
    }
    image.fill(Qt::transparent);
    QRectF target(QPointF(), own.scaled(size, Qt::KeepAspectRatioByExpanding));
    target.moveCenter(QRectF(QPointF(), QSizeF(size)).center());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, target);
    painter.end();
    picture.frames.push_back({image, 0});
}

}  // namespace

std::shared_ptr<const Picture> picture_decoder::Decode(const std::string& bytes, const ImageInfo& info,
                                                       const QSize& size, bool moving,
                                                       const std::atomic<bool>& cancelled) {
    auto picture = std::make_shared<Picture>();
    const auto raw = QByteArray::fromRawData(bytes.data(), int(bytes.size()));
    if (info.format == EnImageFormat::kSvg) {
        DecodeDrawing(raw, size, *picture);
    } else {
        DecodePixels(raw, info, size, moving, cancelled, *picture);
    }
    const bool good = !cancelled && !picture->frames.empty() &&
                      std::none_of(picture->frames.begin(), picture->frames.end(),
                                   [](const Picture::Frame& frame) { return frame.image.isNull(); });
    return good ? picture : nullptr;
}
