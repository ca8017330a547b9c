// Validates a picture's bytes. A refusal has a reason. A valid picture keeps the limits, and the decoder reads no
// larger size.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <optional>
#include <string>

#include "FuzzTarget.h"
#include "picture/ImageValidator.h"

namespace {

struct Verdict {
    std::optional<ImageInfo> info;
    std::string reason;
};

Verdict Validate(const std::string& bytes, const ImageLimits& limits = {}) {
    Verdict verdict;
    verdict.info = image_validator::Validate(bytes, limits, verdict.reason);
    return verdict;
}

qint64 PixelsOf(const QSize& size) {
    return qint64(size.width()) * size.height();
}

void CheckTaken(const std::string& bytes, const ImageInfo& info) {
    const ImageLimits limits;
    if (info.format == EnImageFormat::kSvg) {
        EXPECT_EQ(bytes.find("<!DOCTYPE"), std::string::npos);
        return;
    }
    EXPECT_FALSE(info.size.isEmpty());
    EXPECT_LE(PixelsOf(info.size), limits.pixels);
    EXPECT_GE(info.frames, 1);
    EXPECT_LE(info.frames, limits.frames);
    // A decoder that reads a larger size would exceed the memory limit.
    QByteArray copy(bytes.data(), int(bytes.size()));
    QBuffer buffer(&copy);
    QImageReader reader(&buffer, image_validator::FormatName(info.format));
    reader.setAutoDetectImageFormat(false);
    EXPECT_LE(PixelsOf(reader.size()), PixelsOf(info.size));
}

/// Limits equal to the picture accept it, and smaller ones refuse it.
void CheckLimits(const std::string& bytes, const ImageInfo& info) {
    ImageLimits limits;
    limits.bytes = int(bytes.size());
    EXPECT_TRUE(Validate(bytes, limits).info);
    limits.bytes = int(bytes.size()) - 1;
    EXPECT_FALSE(Validate(bytes, limits).info);
    if (info.format == EnImageFormat::kSvg) {
        return;
    }
    limits = {};
    limits.pixels = PixelsOf(info.size);
    limits.frames = info.frames;
    EXPECT_TRUE(Validate(bytes, limits).info);
    --limits.pixels;
    EXPECT_FALSE(Validate(bytes, limits).info);
    limits = {};
    limits.frames = info.frames - 1;
    EXPECT_FALSE(Validate(bytes, limits).info);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const Verdict verdict = Validate(bytes);
    if (!verdict.info) {
        EXPECT_FALSE(verdict.reason.empty());
        return 0;
    }
    CheckTaken(bytes, *verdict.info);
    CheckLimits(bytes, *verdict.info);
    if (verdict.info->format != EnImageFormat::kSvg) {
        // Bytes after the end are ignored.
        const Verdict longer = Validate(bytes + "more");
        EXPECT_TRUE(longer.info && longer.info->size == verdict.info->size &&
                    longer.info->frames == verdict.info->frames);
    }
    return 0;
}
