#pragma once

#include <QSize>
#include <optional>
#include <string>

enum class EnPictureFormat { kPng, kJpeg, kGif, kSvg };

/// What a picture says of itself.
struct PictureFacts {
    EnPictureFormat format = EnPictureFormat::kPng;
    QSize size;  // in pixels; empty for a drawing, which has none
    int frames = 1;
};

struct PictureLimits {
    int bytes = 20 << 20;
    qint64 pixels = 40'000'000;
    int frames = 300;
};

/// Looks at a picture's bytes before anybody decodes them, and believes none of them. Any thread.
namespace picture_judge {

/// By the content alone. Nothing for what is no picture, no whole one, or beyond the limits; `reason` says why.
std::optional<PictureFacts> Judge(const std::string& bytes, const PictureLimits& limits, std::string& reason);

}  // namespace picture_judge
