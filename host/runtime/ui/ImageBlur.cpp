#include "ui/ImageBlur.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace host {
namespace {

constexpr int kLargestCell = 16;
constexpr int kSmallestWholeCell = 4;
// With fewer cells in a sigma, the cells of a blurred edge are visible.
constexpr double kCellsInSigma = 1.5;
constexpr double kWindowInSigmas = 3.0;

using Pixel = CImageBlur::Pixel;
using FourPixels = quint32 __attribute__((vector_size(16)));
using EightNumbers = quint16 __attribute__((vector_size(16)));
using Bytes = quint8 __attribute__((vector_size(16)));
using TwoCells = quint64 __attribute__((vector_size(16)));

constexpr EightNumbers kFirstTwo{1, 1, 1, 1, 3, 3, 3, 3};
constexpr EightNumbers kHalf{0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};

// The toolkit leaves the upper halves of AVX registers in use. Until they are cleared, each SSE instruction waits for
// the one before, which makes these loops four times slower.
#if defined(__x86_64__)
__attribute__((target("avx"))) void ClearUpperHalves() {
    __builtin_ia32_vzeroupper();
}

void ReadyRegisters() {
    static const bool isNeeded = __builtin_cpu_supports("avx") != 0;
    if (isNeeded) {
        ClearUpperHalves();
    }
}
#else
void ReadyRegisters() {}
#endif

int CellFor(double sigma) {
    int cell = kLargestCell;
    while (cell > 1 && sigma < cell * kCellsInSigma) {
        cell /= 2;
    }
    return cell;
}

// Averaging over cells and interpolating between them blurs too, which is subtracted here.
double SigmaInCells(double sigma, int cell) {
    const double averaged = (cell * cell - 1) / 12.0;
    const double interpolated = cell > 1 ? cell * cell / 6.0 : 0.0;
    return std::sqrt(std::max(sigma * sigma - averaged - interpolated, 0.01)) / cell;
}

std::vector<float> Weights(double sigma) {
    const int reach = std::max(1, int(std::ceil(kWindowInSigmas * sigma)));
    std::vector<float> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        const double height = std::exp(-i * i / (2 * sigma * sigma));
        weights.push_back(float(height));
        sum += height;
    }
    for (float& weight : weights) {
        weight = float(weight / sum);
    }
    return weights;
}

Pixel Sum(const Pixel* first, size_t distance, const std::vector<float>& weights) {
    Pixel sum{};
    for (const float weight : weights) {
        sum += *first * weight;
        first += distance;
    }
    return sum;
}

/// Adds up a cell row by row. Each sum of two colours has 16 bits for each, which a cell of 16 by 16 just fits.
Pixel PartialCell(const uchar* from, int bytesPerLine, int columns, int rows) {
    quint32 even = 0;
    quint32 odd = 0;
    for (int y = 0; y < rows; ++y, from += bytesPerLine) {
        const auto* line = reinterpret_cast<const quint32*>(from);
        for (int x = 0; x < columns; ++x) {
            even += line[x] & 0x00ff00ff;
            odd += (line[x] >> 8) & 0x00ff00ff;
        }
    }
    return Pixel{float(even & 0xffff), float(odd & 0xffff), float(even >> 16), float(odd >> 16)} *
           (1.0F / float(columns * rows));
}

/// Adds up the sums of blue and red, and of green and alpha, of four columns of pixels.
Pixel SumOf(const EightNumbers& even, const EightNumbers& odd) {
    const auto evens = FourPixels(even);
    const auto odds = FourPixels(odd);
    const FourPixels halves =
        __builtin_shufflevector(evens, odds, 0, 4, 1, 5) + __builtin_shufflevector(evens, odds, 2, 6, 3, 7);
    const FourPixels sums = halves + __builtin_shufflevector(halves, halves, 2, 3, 0, 1);
    const FourPixels low = sums & 0xffff;
    const FourPixels high = sums >> 16;
    return __builtin_convertvector(__builtin_shufflevector(low, high, 0, 1, 4, 5), Pixel);
}

template <int kCell>
void ReduceCells(const uchar* from, int bytesPerLine, int count, Pixel* to) {
    for (; count > 0; --count, from += kCell * 4, ++to) {
        EightNumbers even{};
        EightNumbers odd{};
        const uchar* line = from;
        for (int y = 0; y < kCell; ++y, line += bytesPerLine) {
            for (int x = 0; x < kCell; x += 4) {
                EightNumbers numbers;
                std::memcpy(&numbers, line + x * 4, sizeof numbers);
                even += numbers & 0xff;
                odd += numbers >> 8;
            }
        }
        *to = SumOf(even, odd) * (1.0F / float(kCell * kCell));
    }
}

void ReduceCells(const uchar* from, int bytesPerLine, int cell, int count, Pixel* to) {
    switch (cell) {
        case 4:
            ReduceCells<4>(from, bytesPerLine, count, to);
            break;
        case 8:
            ReduceCells<8>(from, bytesPerLine, count, to);
            break;
        default:
            ReduceCells<16>(from, bytesPerLine, count, to);
            break;
    }
}

EightNumbers Eight(const quint64* cells) {
    EightNumbers numbers;
    std::memcpy(&numbers, cells, sizeof numbers);
    return numbers;
}

EightNumbers Twice(quint64 cell) {
    return EightNumbers(TwoCells{cell, cell});
}

Bytes HighBytes(const EightNumbers& first, const EightNumbers& second) {
    return __builtin_shufflevector(Bytes(first), Bytes(second), 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29,
                                   31);
}

}  // namespace

CImageBlur::CImageBlur(const QSize& size, double sigma) : m_size(size), m_nCell(CellFor(sigma)) {
    m_reducedSize = QSize((size.width() + m_nCell - 1) / m_nCell, (size.height() + m_nCell - 1) / m_nCell);
    m_weights = Weights(SigmaInCells(sigma, m_nCell));
    m_taken.resize(size_t(m_reducedSize.width()) * size_t(m_reducedSize.height()));
    m_blurred = m_taken;
}

bool CImageBlur::Take(const QImage& part, const QPoint& at) {
    ReadyRegisters();
    bool differs = false;
    for (int top = 0; top < part.height(); top += m_nCell) {
        Reduce(part, top);
        Pixel* taken = TakenAt(at + QPoint(0, top));
        if (!IsReduced(taken)) {
            differs = true;
            std::copy(m_reducedRow.begin(), m_reducedRow.end(), taken);
        }
    }
    return differs;
}

bool CImageBlur::Holds(const QImage& whole) {
    ReadyRegisters();
    for (int top = 0; top < whole.height(); top += m_nCell) {
        Reduce(whole, top);
        if (!IsReduced(TakenAt(QPoint(0, top)))) {
            return false;
        }
    }
    return true;
}

// Reduces the row of cells that begins at `top`.
void CImageBlur::Reduce(const QImage& part, int top) {
    const int bytesPerLine = part.bytesPerLine();
    const int rows = std::min(m_nCell, part.height() - top);
    const uchar* from = part.constScanLine(top);
    const int whole = rows == m_nCell && m_nCell >= kSmallestWholeCell ? part.width() / m_nCell : 0;
    m_reducedRow.resize(size_t((part.width() + m_nCell - 1) / m_nCell));
    ReduceCells(from, bytesPerLine, m_nCell, whole, m_reducedRow.data());
    for (size_t i = size_t(whole); i < m_reducedRow.size(); ++i) {
        const int left = int(i) * m_nCell;
        m_reducedRow[i] = PartialCell(from + left * 4, bytesPerLine, std::min(m_nCell, part.width() - left), rows);
    }
}

// Equal pixels give equal bits.
bool CImageBlur::IsReduced(const Pixel* taken) const {
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    return std::memcmp(m_reducedRow.data(), taken, m_reducedRow.size() * sizeof(Pixel)) == 0;
}

CImageBlur::Pixel* CImageBlur::TakenAt(const QPoint& at) {
    return &m_taken[size_t(at.y() / m_nCell) * size_t(m_reducedSize.width()) + size_t(at.x() / m_nCell)];
}

// Beyond the edges the image goes on with the colours of its edge.
void CImageBlur::Blur() {
    ReadyRegisters();
    const auto width = size_t(m_reducedSize.width());
    const auto height = size_t(m_reducedSize.height());
    const size_t reach = m_weights.size() / 2;
    m_padded.resize(width + 2 * reach);
    for (size_t y = 0; y < height; ++y) {
        Pixel* line = m_padded.data() + reach;
        if (y >= reach && y + reach < height) {
            for (size_t x = 0; x < width; ++x) {
                line[x] = Sum(&m_taken[(y - reach) * width + x], width, m_weights);
            }
        } else {
            std::fill_n(line, width, Pixel{});
            for (size_t tap = 0; tap < m_weights.size(); ++tap) {
                const size_t row = std::min(std::max(y + tap, reach) - reach, height - 1);
                for (size_t x = 0; x < width; ++x) {
                    line[x] += m_taken[row * width + x] * m_weights[tap];
                }
            }
        }
        std::fill_n(m_padded.data(), reach, line[0]);
        std::fill_n(line + width, reach, line[width - 1]);
        for (size_t x = 0; x < width; ++x) {
            m_blurred[y * width + x] = Sum(&m_padded[x], 1, m_weights);
        }
    }
}

void CImageBlur::Write(QImage& result, QImage::Format format, const QColor& tint) {
    ReadyRegisters();
    if (result.size() != m_size || result.format() != format) {
        result = QImage(m_size, format);
    }
    // A number of a cell has 16 bits less those that the steps between two cells add.
    const int steps = m_nCell == 1 ? 1 : 2 * m_nCell;
    const int unitOfStep = 0x100 / steps;
    const auto unit = float(unitOfStep);
    Pixel add{};
    float rest = unit;
    if (tint.isValid()) {
        const auto alpha = float(tint.alphaF());
        add = Pixel{float(tint.blue()), float(tint.green()), float(tint.red()), 255.0F} * (alpha * unit);
        rest = unit * (1.0F - alpha);
    }
    m_cells.resize(m_blurred.size() + 1);  // the last pair of a row may begin with its last cell
    for (size_t i = 0; i < m_blurred.size(); ++i) {
        const Pixel pixel = m_blurred[i] * rest + add + 0.5F;
        m_cells[i] = quint64(pixel[0]) | quint64(pixel[1]) << 16 | quint64(pixel[2]) << 32 | quint64(pixel[3]) << 48;
    }
    switch (m_nCell) {
        case 2:
            Enlarge<2>(result);
            break;
        case 4:
            Enlarge<4>(result);
            break;
        case 8:
            Enlarge<8>(result);
            break;
        case 16:
            Enlarge<16>(result);
            break;
        default:
            WriteUnreduced(result);
            break;
    }
}

// Interpolates in steps of half a pixel, the distance of a pixel's centre from its edge: first down, which keeps the
// range of a cell's numbers, and then across.
template <int kCell>
void CImageBlur::Enlarge(QImage& result) {
    constexpr int kSteps = 2 * kCell;
    const int width = m_reducedSize.width();
    const int pairs = (width + 1) / 2;
    m_row.resize(size_t(pairs) * 2 + 2);
    m_line.resize((size_t(width) + 1) * kCell + 4);
    quint64* row = m_row.data() + 1;
    uchar* to = result.bits();
    for (int y = 0; y < m_size.height(); ++y, to += result.bytesPerLine()) {
        const int above = (y + kCell / 2) / kCell - 1;
        const int step = 2 * ((y + kCell / 2) % kCell) + 1;
        const quint64* upper = &m_cells[size_t(std::max(above, 0)) * size_t(width)];
        const quint64* lower = &m_cells[size_t(std::min(above + 1, m_reducedSize.height() - 1)) * size_t(width)];
        const auto upperWeight = quint16(kSteps - step);
        const auto lowerWeight = quint16(step);
        for (int i = 0; i < pairs; ++i) {
            const EightNumbers sum = Eight(upper + 2 * i) * upperWeight + Eight(lower + 2 * i) * lowerWeight;
            const EightNumbers mean = (sum + quint16(kCell)) / quint16(kSteps);
            std::memcpy(row + 2 * i, &mean, sizeof mean);
        }
        row[-1] = row[0];
        row[width] = row[width - 1];
        auto* pixels = m_line.data();
        for (int x = 0; x <= width; ++x, pixels += kCell) {
            const EightNumbers left = Twice(row[x - 1]);
            const EightNumbers difference = Twice(row[x]) - left;  // below 0 it wraps, which the sum undoes
            EightNumbers sum = left * quint16(kSteps) + difference * kFirstTwo + kHalf;
            for (int i = 0; i < kCell; i += 4) {
                const EightNumbers next = sum + difference * quint16(4);
                const Bytes bytes = HighBytes(sum, next);
                std::memcpy(pixels + i, &bytes, sizeof bytes);
                sum = next + difference * quint16(4);
            }
        }
        std::memcpy(to, m_line.data() + kCell / 2, size_t(m_size.width()) * sizeof(quint32));
    }
}

void CImageBlur::WriteUnreduced(QImage& result) const {
    const quint64* from = m_cells.data();
    for (int y = 0; y < m_size.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(result.scanLine(y));
        for (int x = 0; x < m_size.width(); ++x, ++from) {
            const EightNumbers numbers = Twice(*from) + kHalf;
            const Bytes bytes = HighBytes(numbers, numbers);
            std::memcpy(line + x, &bytes, sizeof line[x]);
        }
    }
}

}  // namespace host
