// A picture's bytes before anybody decodes them: what is refused says why, what is taken keeps to the limits and is
// no larger for the decoder than it was judged.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <optional>
#include <string>

#include "FuzzTarget.h"
#include "picture/ImageValidator.h"

namespace {

struct Verdict {
    std::optional<ImageInfo> facts;
    std::string reason;
};

Verdict Judge(const std::string& bytes, const ImageLimits& limits = {}) {
    Verdict verdict;
    verdict.facts = image_validator::Validate(bytes, limits, verdict.reason);
    return verdict;
}

qint64 PixelsOf(const QSize& size) {
    return qint64(size.width()) * size.height();
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

void CheckTaken(const std::string& bytes, const ImageInfo& facts) {
    const ImageLimits limits;
    if (facts.format == EnImageFormat::kSvg) {
        EXPECT_EQ(bytes.find("<!DOCTYPE"), std::string::npos);
        return;
    }
    EXPECT_FALSE(facts.size.isEmpty());
    EXPECT_LE(PixelsOf(facts.size), limits.pixels);
    EXPECT_GE(facts.frames, 1);
    EXPECT_LE(facts.frames, limits.frames);
    // A decoder that reads another size than was judged would take memory that nobody has allowed.
    QByteArray copy(bytes.data(), int(bytes.size()));
    QBuffer buffer(&copy);
    QImageReader reader(&buffer, NameOf(facts.format));
    reader.setAutoDetectImageFormat(false);
    EXPECT_LE(PixelsOf(reader.size()), PixelsOf(facts.size));
}

/// Limits that are as narrow as the picture take it, and narrower ones do not.
void CheckLimits(const std::string& bytes, const ImageInfo& facts) {
    ImageLimits limits;
    limits.bytes = int(bytes.size());
    EXPECT_TRUE(Judge(bytes, limits).facts);
    limits.bytes = int(bytes.size()) - 1;
    EXPECT_FALSE(Judge(bytes, limits).facts);
    if (facts.format == EnImageFormat::kSvg) {
        return;
    }
    limits = {};
    limits.pixels = PixelsOf(facts.size);
    limits.frames = facts.frames;
    EXPECT_TRUE(Judge(bytes, limits).facts);
    --limits.pixels;
    EXPECT_FALSE(Judge(bytes, limits).facts);
    limits = {};
    limits.frames = facts.frames - 1;
    EXPECT_FALSE(Judge(bytes, limits).facts);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const Verdict verdict = Judge(bytes);
    if (!verdict.facts) {
        EXPECT_FALSE(verdict.reason.empty());
        return 0;
    }
    CheckTaken(bytes, *verdict.facts);
    CheckLimits(bytes, *verdict.facts);
    if (verdict.facts->format != EnImageFormat::kSvg) {
        // What comes behind the end concerns nobody.
        const Verdict longer = Judge(bytes + "more");
        EXPECT_TRUE(longer.facts && longer.facts->size == verdict.facts->size &&
                    longer.facts->frames == verdict.facts->frames);
    }
    return 0;
}
