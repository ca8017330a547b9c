#pragma once

#include <QColor>
#include <QImage>
#include <vector>

#include "framework/export.h"

namespace host {

/// Blurs images of one size. The work is done on a reduced copy, which is also what changes are compared with.
/// Thread: one thread at a time.
class ZRHOST_API CImageBlur {
public:
    /// Blue, green, red and alpha from 0 to 255. The compiler has vectors for it.
    using Pixel = float __attribute__((vector_size(16)));

    CImageBlur() = default;
    /// Prepares blurring with a Gaussian of that sigma, both in device pixels.
    CImageBlur(const QSize& size, double sigma);

    const QSize& Size() const { return m_size; }
    /// Returns the width and height of a cell, the pixels that become one pixel of the reduced copy.
    int Cell() const { return m_nCell; }

    /// Takes a part of the image, in a format of 32 bits. `at` is on the corner of a cell. A part ends on the edge of
    /// a cell or of the image. Returns whether it differs from what was there.
    bool Take(const QImage& part, const QPoint& at);

    /// Returns whether the image, in a format of 32 bits, is what was taken.
    bool Holds(const QImage& whole);

    /// Blurs what was taken.
    void Blur();

    /// Writes the blurred image under `tint` to `result`, which is reused if size and format are the same.
    void Write(QImage& result, QImage::Format format, const QColor& tint);

private:
    void Reduce(const QImage& part, int top);
    bool IsReduced(const Pixel* taken) const;
    Pixel* TakenAt(const QPoint& at);
    template <int kCell>
    void Enlarge(QImage& result);
    void WriteUnreduced(QImage& result) const;

    QSize m_size;
    QSize m_reducedSize;
    int m_nCell = 1;
    std::vector<float> m_weights;
    std::vector<Pixel> m_taken;
    std::vector<Pixel> m_blurred;
    // Buffers that are kept between calls.
    std::vector<Pixel> m_reducedRow;
    std::vector<Pixel> m_padded;
    std::vector<quint64> m_cells;  // four numbers of 16 bits each
    std::vector<quint64> m_row;
    std::vector<quint32> m_line;
};

}  // namespace host
