#pragma once

#include <QSize>
#include <optional>
#include <string>

enum class EnImageFormat { kPng, kJpeg, kGif };

/// Properties of an image that are read without decoding it.
struct ImageInfo {
    EnImageFormat format = EnImageFormat::kPng;
    QSize size;  // in pixels
    int frames = 1;
    qint64 memory = 0;  // maximum of bytes that decoding one frame needs
};

struct ImageLimits {
    int bytes = 20 << 20;
    qint64 pixels = 40'000'000;
    int frames = 300;
    qint64 memory = 280 << 20;
};

/// Validates the bytes of an image before they are decoded. Any thread.
namespace image_validator {

/// The name of a format for QImageReader.
const char* FormatName(EnImageFormat format);

/// The format is found by content. Empty, with the reason, for other content, a cut image and one beyond the limits.
std::optional<ImageInfo> Validate(const std::string& bytes, const ImageLimits& limits, std::string& reason);

}  // namespace image_validator
