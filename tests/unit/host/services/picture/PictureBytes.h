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

inline std::string Svg(const std::string& content, const std::string& attributes = "") {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 40 "
           "20\" " +
           attributes + ">" + content + "</svg>";
}

inline std::string GoodSvg() {
    return Svg("<rect width=\"40\" height=\"20\" fill=\"#ff0000\"/>");
}

}  // namespace picture_bytes
