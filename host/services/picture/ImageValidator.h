#pragma once

#include <QSize>
#include <optional>
#include <string>

enum class EnImageFormat { kPng, kJpeg, kGif, kSvg };

/// What a picture says of itself.
struct ImageInfo {
    EnImageFormat format = EnImageFormat::kPng;
    QSize size;  // in pixels; empty for a drawing, which has none
    int frames = 1;
};

struct ImageLimits {
    int bytes = 20 << 20;
    qint64 pixels = 40'000'000;
    int frames = 300;
};

/// Looks at a picture's bytes before anybody decodes them, and believes none of them. Any thread.
namespace image_validator {

/// By the content alone. Nothing for what is no picture, no whole one, or beyond the limits; `reason` says why.
std::optional<ImageInfo> Judge(const std::string& bytes, const ImageLimits& limits, std::string& reason);

}  // namespace image_validator
