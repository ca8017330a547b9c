#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <string>

/// Pictures as bytes, built by hand where no encoder writes them.
namespace picture_bytes {

inline std::string Encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter(&buffer, format).write(image);
    return bytes.toStdString();
}

inline QImage Plain(const QSize& size, const QColor& color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

inline std::string Png(const QSize& size = QSize(40, 20)) {
    return Encoded(Plain(size, Qt::red), "png");
}

inline std::string Jpeg(const QSize& size = QSize(40, 20)) {
    return Encoded(Plain(size, Qt::red), "jpeg");
}

inline std::string Little16(int number) {
    return {char(number & 0xFF), char(number >> 8 & 0xFF)};
}

inline std::string Big32(uint32_t number) {
    return {char(number >> 24), char(number >> 16), char(number >> 8), char(number)};
}

/// A frame of one pixel in one of two colours, shown for `hundredths` of a second.
inline std::string GifFrame(int color, int hundredths, const QSize& size = QSize(1, 1)) {
    const std::string control = std::string("\x21\xF9\x04\x00", 4) + Little16(hundredths) + std::string("\0\0", 2);
    const std::string place = "\x2C" + std::string(4, '\0') + Little16(size.width()) + Little16(size.height()) + '\0';
    // Two bits to begin with: clear, the colour, end, three bits each.
    const int code = 4 | color << 3 | 5 << 6;
    return control + place + "\x02\x02" + Little16(code) + std::string(1, '\0');
}

/// A header with the colours red and blue.
inline std::string GifHead(const QSize& size = QSize(1, 1)) {
    return "GIF89a" + Little16(size.width()) + Little16(size.height()) + std::string("\x80\0\0", 3) +
           std::string("\xFF\0\0\0\0\xFF", 6);
}

inline std::string Gif(int frames, int hundredths = 10) {
    std::string bytes = GifHead();
    for (int i = 0; i < frames; ++i) {
        bytes += GifFrame(i % 2, hundredths);
    }
    return bytes + ";";
}

/// A chunk of a PNG with its checksum.
inline std::string PngChunk(const std::string& typeAndData) {
    uint32_t sum = 0xFFFFFFFF;
    for (const char c : typeAndData) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    return Big32(uint32_t(typeAndData.size() - 4)) + typeAndData + Big32(~sum);
}

/// A PNG with this size in its header, and no pixels.
inline std::string PngOfSize(uint32_t width, uint32_t height) {
    return std::string("\x89PNG\r\n\x1A\n", 8) +
           PngChunk("IHDR" + Big32(width) + Big32(height) + std::string("\x08\x02\0\0\0", 5)) + PngChunk("IDAT") +
           PngChunk("IEND");
}

/// The PNG with `chunks` behind its header.
inline std::string WithChunks(const std::string& png, const std::string& chunks) {
    constexpr size_t kHeaderEnd = 8 + 12 + 13;
    return png.substr(0, kHeaderEnd) + chunks + png.substr(kHeaderEnd);
}

/// A chunk with a text of `bytes` bytes, which takes a thousandth of it.
inline std::string PackedText(int bytes) {
    const QByteArray packed = qCompress(QByteArray(bytes, 'x')).mid(4);  // without the size that qCompress adds
    return PngChunk(std::string("zTXtNote\0\0", 10) + packed.toStdString());
}

/// The JPEG with an orientation, from 1 to 8, as cameras write it.
inline std::string Oriented(const std::string& jpeg, int orientation) {
    const std::string exif = std::string("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25) +
                             char(orientation) + std::string(6, '\0');
    const size_t length = exif.size() + 2;
    return jpeg.substr(0, 2) + "\xFF\xE1" + char(length >> 8) + char(length & 0xFF) + exif + jpeg.substr(2);
}

inline std::string Svg() {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 20"><rect width="40" height="20"/></svg>)";
}

}  // namespace picture_bytes
