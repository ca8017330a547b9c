#include "ui/ImageBlur.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <cmath>

namespace {

using host::CImageBlur;

constexpr double kSigmaOfRadius = 0.615;
constexpr int kEdge = 40;

QImage Plain(const QSize& size, const QColor& color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QImage Text() {
    QImage image = Plain(QSize(331, 207), Qt::white);
    QPainter painter(&image);
    for (int row = 0; row < 14; ++row) {
        painter.setPen(row % 3 == 0 ? Qt::red : Qt::black);
        painter.drawText(5, 15 * row + 12, QStringLiteral("1,234.56 +7.89% ABCD price of the day 0.01"));
    }
    return image;
}

QImage Edges() {
    QImage image = Plain(QSize(320, 200), Qt::black);
    QPainter painter(&image);
    painter.fillRect(93, 0, 110, 200, Qt::white);
    painter.fillRect(150, 90, 170, 31, Qt::green);
    painter.fillRect(0, 101, 320, 1, Qt::yellow);
    return image;
}

/// Light with noise in it, as in a photograph.
QImage Photograph() {
    QImage image(QSize(320, 200), QImage::Format_RGB32);
    quint32 seed = 7;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            seed = seed * 1664525 + 1013904223;
            const int noise = int(seed >> 26);
            const int light = int(96 + 80 * std::sin(x / 23.0) * std::cos(y / 17.0));
            image.setPixel(x, y, qRgb(light + noise, light, (x * 255 / 320 + noise) & 0xff));
        }
    }
    return image;
}

QImage Blurred(const QImage& image, double sigma, const QColor& tint = QColor()) {
    CImageBlur blur(image.size(), sigma);
    blur.Take(image, QPoint());
    blur.Blur();
    QImage result;
    blur.Write(result, image.format(), tint);
    return result;
}

/// A Gaussian by its definition, in floating point and with a wide window.
class CGaussian {
public:
    CGaussian(const QImage& image, double sigma) : m_size(image.size()) {
        std::vector<double> weights;
        const int reach = int(5 * sigma);
        double sum = 0;
        for (int i = -reach; i <= reach; ++i) {
            weights.push_back(std::exp(-i * i / (2 * sigma * sigma)));
            sum += weights.back();
        }
        for (int channel = 0; channel < 3; ++channel) {
            std::vector<double> across(size_t(m_size.width() * m_size.height()));
            for (int y = 0; y < m_size.height(); ++y) {
                for (int x = 0; x < m_size.width(); ++x) {
                    for (int i = -reach; i <= reach; ++i) {
                        const QRgb pixel = image.pixel(qBound(0, x + i, m_size.width() - 1), y);
                        across[Index(x, y)] += weights[size_t(i + reach)] / sum * ((pixel >> (8 * channel)) & 0xff);
                    }
                }
            }
            m_channels[channel].resize(across.size());
            for (int y = 0; y < m_size.height(); ++y) {
                for (int x = 0; x < m_size.width(); ++x) {
                    for (int i = -reach; i <= reach; ++i) {
                        m_channels[channel][Index(x, y)] +=
                            weights[size_t(i + reach)] / sum * across[Index(x, qBound(0, y + i, m_size.height() - 1))];
                    }
                }
            }
        }
    }

    double Farthest(const QImage& image, int edge) const {
        double farthest = 0;
        for (int y = edge; y < m_size.height() - edge; ++y) {
            for (int x = edge; x < m_size.width() - edge; ++x) {
                for (int channel = 0; channel < 3; ++channel) {
                    const int seen = (image.pixel(x, y) >> (8 * channel)) & 0xff;
                    farthest = std::max(farthest, std::abs(m_channels[channel][Index(x, y)] - seen));
                }
            }
        }
        return farthest;
    }

private:
    size_t Index(int x, int y) const { return size_t(y * m_size.width() + x); }

    const QSize m_size;
    std::vector<double> m_channels[3];
};

TEST(ImageBlur, IsCloseToAGaussianOnTextEdgesAndPhotographs) {
    const std::pair<const char*, QImage> images[] = {{"text", Text()}, {"edges", Edges()}, {"photo", Photograph()}};
    for (const auto& [name, image] : images) {
        for (const double radius : {5.0, 10.0, 20.0, 40.0}) {
            const double sigma = radius * kSigmaOfRadius;
            const double farthest = CGaussian(image, sigma).Farthest(Blurred(image, sigma), kEdge);
            EXPECT_LE(farthest, 10) << name << " " << radius;
        }
    }
}

TEST(ImageBlur, KeepsAPlainColourToTheEdges) {
    for (const double sigma : {0.1, 1.0, 3.0, 6.0, 12.3, 30.0, 100.0}) {
        const QImage image = Plain(QSize(61, 37), QColor(255, 128, 1));
        EXPECT_EQ(Blurred(image, sigma), image) << sigma;
    }
}

TEST(ImageBlur, LaysTheTintOverTheBlur) {
    const QImage tinted = Blurred(Plain(QSize(61, 37), QColor(200, 100, 0)), 12.3, QColor(0, 0, 255, 51));
    EXPECT_EQ(tinted, Plain(QSize(61, 37), QColor(160, 80, 51)));
    EXPECT_EQ(Blurred(Text(), 12.3, Qt::red), Plain(Text().size(), Qt::red));
}

TEST(ImageBlur, ReportsADifferenceOfOnePixel) {
    QImage image = Plain(QSize(61, 37), Qt::gray);
    CImageBlur blur(image.size(), 12.3);
    EXPECT_TRUE(blur.Take(image, QPoint()));
    EXPECT_FALSE(blur.Take(image, QPoint()));
    for (const QPoint& point : {QPoint(0, 0), QPoint(30, 20), QPoint(60, 36)}) {
        image.setPixel(point, qRgb(160, 160, 165));
        EXPECT_TRUE(blur.Take(image, QPoint()));
        EXPECT_FALSE(blur.Take(image, QPoint()));
    }
}

TEST(ImageBlur, HoldsTheImageThatWasTakenAndNoOther) {
    for (const double sigma : {1.0, 4.0, 12.3, 40.0}) {
        QImage image = Photograph();
        CImageBlur blur(image.size(), sigma);
        EXPECT_FALSE(blur.Holds(image)) << sigma;
        blur.Take(image, QPoint());
        EXPECT_TRUE(blur.Holds(image)) << sigma;
        for (const QPoint& place : {QPoint(0, 0), QPoint(319, 0), QPoint(5, 199), QPoint(319, 199)}) {
            QImage other = image.copy();
            other.setPixel(place, ~other.pixel(place));
            EXPECT_FALSE(blur.Holds(other)) << sigma << " " << place.x();
        }
        EXPECT_TRUE(blur.Holds(image)) << sigma;
    }
}

TEST(ImageBlur, TakesAPartAtItsPlace) {
    const QImage image = Text();
    CImageBlur blur(image.size(), 12.3);
    const int middle = 10 * blur.Cell();
    for (const int x : {0, middle}) {
        for (const int y : {0, middle}) {
            const QRect part = QRect(x, y, x == 0 ? middle : 1000, y == 0 ? middle : 1000) & image.rect();
            blur.Take(image.copy(part), part.topLeft());
        }
    }
    blur.Blur();
    QImage result;
    blur.Write(result, image.format(), QColor());
    EXPECT_EQ(result, Blurred(image, 12.3));
}

}  // namespace
