#include "LargePictures.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <algorithm>
#include <random>

namespace {

constexpr QSize kSize(4000, 3000);
constexpr QSize kChange(1000, 750);
constexpr int kChanges = 5;

void AddLittle16(QByteArray& bytes, int number) {
    bytes.append(char(number & 0xFF));
    bytes.append(char(number >> 8));
}

/// Adds uncompressed pixels of 128 colours. Clearing the table before it is half full keeps codes at eight bits.
void AddGifPixels(QByteArray& bytes, int count, std::mt19937& random) {
    constexpr int kLiterals = 125;
    constexpr int kLongestBlock = 255;
    QByteArray codes;
    for (int i = 0; i < count; ++i) {
        if (i % kLiterals == 0) {
            codes.append(char(128));  // clears the table
        }
        codes.append(char(random() % 128));
    }
    codes.append(char(129));  // the end
    bytes.append(char(7));
    for (int at = 0; at < codes.size(); at += kLongestBlock) {
        const int length = std::min(kLongestBlock, codes.size() - at);
        bytes.append(char(length)).append(codes.constData() + at, length);
    }
    bytes.append('\0');
}

void AddGifFrame(QByteArray& bytes, const QSize& size, std::mt19937& random) {
    bytes.append("\x21\xF9\x04\x00\x02\x00\x00\x00", 8);  // for two hundredths of a second
    bytes.append("\x2C\x00\x00\x00\x00", 5);
    AddLittle16(bytes, size.width());
    AddLittle16(bytes, size.height());
    bytes.append('\0');
    AddGifPixels(bytes, size.width() * size.height(), random);
}

}  // namespace

QByteArray large_pictures::Encoded(const char* format) {
    QImage image(kSize, QImage::Format_RGB32);
    std::mt19937 random(1);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            line[x] = x % 7 == 0 ? random() : 0xFF336699u + QRgb(x / 40);
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter(&buffer, format).write(image);
    return bytes;
}

QByteArray large_pictures::Gif() {
    std::mt19937 random(1);
    QByteArray bytes("GIF89a");
    AddLittle16(bytes, kSize.width());
    AddLittle16(bytes, kSize.height());
    bytes.append("\xE6\x00\x00", 3);  // a table of 128 colours
    for (int i = 0; i < 128; ++i) {
        bytes.append(char(2 * i)).append(char(255 - i)).append(char(i));
    }
    AddGifFrame(bytes, kSize, random);
    for (int i = 0; i < kChanges; ++i) {
        AddGifFrame(bytes, kChange, random);
    }
    return bytes.append(';');
}
