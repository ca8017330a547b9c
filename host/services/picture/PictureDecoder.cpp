#include "picture/PictureDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

namespace {

// Of all frames together. As they are kept, 300 frames, which is what the judge lets pass, of a strip across a page on
// a screen of two pixels to one. With four bytes each these are 350 MB, and only for a picture that is at all limits.
// As they are decoded, a few seconds.
constexpr qint64 kMostKeptPixels = 300LL * (2 * 662) * (2 * 110);
constexpr qint64 kMostDecodedPixels = 400'000'000;

// Many pictures that move say nothing, or next to nothing: everybody takes that for the same.
constexpr int kShortestMillis = 20;
constexpr int kUsualMillis = 100;

qint64 Area(const QSize& size) {
    return qint64(size.width()) * size.height();
}

/// The part of the middle that has the proportions of `size`.
QRect Middle(const QSize& whole, const QSize& size) {
    const QSize part = size.scaled(whole, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return {QPoint((whole.width() - part.width()) / 2, (whole.height() - part.height()) / 2), part};
}

QImage Covering(QImage image, const QSize& size) {
    image = std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                     : QImage::Format_RGB32);
    const QRect middle = Middle(image.size(), size);
    // A view, no copy: the picture may be large.
    const QImage part(image.constScanLine(middle.top()) + qsizetype(middle.left()) * 4, middle.width(), middle.height(),
                      int(image.bytesPerLine()), image.format());
    return part.size() == size ? part.copy() : part.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

const char* NameOf(EnImageFormat format) {
    switch (format) {
        case EnImageFormat::kPng:
            return "png";
        case EnImageFormat::kJpeg:
            return "jpeg";
        case EnImageFormat::kGif:
            return "gif";
        case EnImageFormat::kSvg:
            return "svg";
    }
    return "";
}

int FrameCount(const ImageInfo& facts, const QSize& size, bool moving) {
    const bool fits =
        facts.frames * Area(size) <= kMostKeptPixels && facts.frames * Area(facts.size) <= kMostDecodedPixels;
    return moving && fits ? facts.frames : 1;
}

void DecodePixels(QByteArray bytes, const ImageInfo& facts, const QSize& size, bool moving,
                  const std::atomic<bool>& cancelled, Picture& picture) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, NameOf(facts.format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    // The judge and the decoder read the same head.
    if (Area(reader.size()) > Area(facts.size)) {
        return;
    }
    const int count = FrameCount(facts, size, moving);
    for (int i = 0; i < count && !cancelled; ++i) {
        QImage image;
        if (!reader.read(&image) || image.isNull()) {
            return;
        }
        const int millis = reader.nextImageDelay();
        picture.frames.push_back({Covering(std::move(image), size), millis < kShortestMillis ? kUsualMillis : millis});
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

std::shared_ptr<const Picture> picture_decoder::Decode(const std::string& bytes, const ImageInfo& facts,
                                                       const QSize& size, bool moving,
                                                       const std::atomic<bool>& cancelled) {
    auto picture = std::make_shared<Picture>();
    const auto raw = QByteArray::fromRawData(bytes.data(), int(bytes.size()));
    if (facts.format == EnImageFormat::kSvg) {
        DecodeDrawing(raw, size, *picture);
    } else {
        DecodePixels(raw, facts, size, moving, cancelled, *picture);
    }
    const bool good = !cancelled && !picture->frames.empty() &&
                      std::none_of(picture->frames.begin(), picture->frames.end(),
                                   [](const Picture::Frame& frame) { return frame.image.isNull(); });
    return good ? picture : nullptr;
}
