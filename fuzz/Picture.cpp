// Input: an encoded picture before it is decoded. A refused picture has a reason. An accepted picture is within the
// limits, and the decoder reads no larger size.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <optional>
#include <string>

#include "FuzzTarget.h"
#include "picture/PictureJudge.h"

namespace {

struct Verdict {
    std::optional<PictureFacts> facts;
    std::string reason;
};

Verdict Judge(const std::string& bytes, const PictureLimits& limits = {}) {
    Verdict verdict;
    verdict.facts = picture_judge::Judge(bytes, limits, verdict.reason);
    return verdict;
}

qint64 PixelsOf(const QSize& size) {
    return qint64(size.width()) * size.height();
}

const char* NameOf(EnPictureFormat format) {
    switch (format) {
        case EnPictureFormat::kPng:
            return "png";
        case EnPictureFormat::kJpeg:
            return "jpeg";
        case EnPictureFormat::kGif:
            return "gif";
        case EnPictureFormat::kSvg:
            return "svg";
    }
    return "";
}

void CheckTaken(const std::string& bytes, const PictureFacts& facts) {
    const PictureLimits limits;
    if (facts.format == EnPictureFormat::kSvg) {
        EXPECT_EQ(bytes.find("<!DOCTYPE"), std::string::npos);
        return;
    }
    EXPECT_FALSE(facts.size.isEmpty());
    EXPECT_LE(PixelsOf(facts.size), limits.pixels);
    EXPECT_GE(facts.frames, 1);
    EXPECT_LE(facts.frames, limits.frames);
    // A decoder that reads a larger size than the check would allocate memory beyond the limit.
    QByteArray copy(bytes.data(), int(bytes.size()));
    QBuffer buffer(&copy);
    QImageReader reader(&buffer, NameOf(facts.format));
    reader.setAutoDetectImageFormat(false);
    EXPECT_LE(PixelsOf(reader.size()), PixelsOf(facts.size));
}

/// Limits equal to the picture's values accept it, and smaller limits refuse it.
void CheckLimits(const std::string& bytes, const PictureFacts& facts) {
    PictureLimits limits;
    limits.bytes = int(bytes.size());
    EXPECT_TRUE(Judge(bytes, limits).facts);
    limits.bytes = int(bytes.size()) - 1;
    EXPECT_FALSE(Judge(bytes, limits).facts);
    if (facts.format == EnPictureFormat::kSvg) {
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
    if (verdict.facts->format != EnPictureFormat::kSvg) {
        // Bytes behind the end of the picture are ignored.
        const Verdict longer = Judge(bytes + "more");
        EXPECT_TRUE(longer.facts && longer.facts->size == verdict.facts->size &&
                    longer.facts->frames == verdict.facts->frames);
    }
    return 0;
}
