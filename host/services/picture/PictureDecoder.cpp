#include "picture/PictureDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QTransform>
#include <algorithm>

#include "picture/PngChunks.h"

namespace {

// Limits for all frames together. Memory: 300 frames, the validator's maximum, of a page-wide strip at a device pixel
// ratio of 2 fit. Decoded: less than a second of work.
constexpr qint64 kMaxMemory = 350 << 20;
constexpr qint64 kMaxDecodedPixels = 150'000'000;

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
    const bool fits =
        info.frames * Area(size) * 4 + info.memory <= kMaxMemory && info.frames * Area(info.size) <= kMaxDecodedPixels;
    return moving && fits ? info.frames : 1;
}

// The library would rotate the whole image and need its memory twice.
QImage Turned(QImage image, QImageIOHandler::Transformations turn) {
    image = std::move(image).mirrored(turn.testFlag(QImageIOHandler::TransformationMirror),
                                      turn.testFlag(QImageIOHandler::TransformationFlip));
    constexpr qreal kQuarter = 90;
    return turn.testFlag(QImageIOHandler::TransformationRotate90) ? image.transformed(QTransform().rotate(kQuarter))
                                                                  : image;
}

void DecodePixels(QByteArray bytes, const ImageInfo& info, const QSize& size, bool moving,
                  const std::atomic<bool>& cancelled, Picture& picture) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, image_validator::FormatName(info.format));
    reader.setAutoDetectImageFormat(false);
    // The decoder must not read another size than the validator did.
    if (Area(reader.size()) > Area(info.size)) {
        return;
    }
    const int count = FrameCount(info, size, moving);
    const auto turn = reader.transformation();
    const bool isLying = turn.testFlag(QImageIOHandler::TransformationRotate90);
    const QSize covered = isLying ? size.transposed() : size;
    for (int i = 0; i < count && !cancelled; ++i) {
        QImage image;
        if (!reader.read(&image) || image.isNull()) {
            return;
        }
        const int millis = reader.nextImageDelay();
        picture.frames.push_back(
            {Turned(Covering(std::move(image), covered), turn), millis < kMinDelayMs ? kDefaultDelayMs : millis});
    }
}

}  // namespace

std::shared_ptr<const Picture> picture_decoder::Decode(const std::string& bytes, const ImageInfo& info,
                                                       const QSize& size, bool moving,
                                                       const std::atomic<bool>& cancelled) {
    auto picture = std::make_shared<Picture>();
    const std::string essential = info.format == EnImageFormat::kPng ? png_chunks::Essential(bytes) : std::string();
    const std::string& read = info.format == EnImageFormat::kPng ? essential : bytes;
    DecodePixels(QByteArray::fromRawData(read.data(), int(read.size())), info, size, moving, cancelled, *picture);
    const bool good = !cancelled && !picture->frames.empty() &&
                      std::none_of(picture->frames.begin(), picture->frames.end(),
                                   [](const Picture::Frame& frame) { return frame.image.isNull(); });
    return good ? picture : nullptr;
}
