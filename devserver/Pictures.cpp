#include "Pictures.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace devserver {
namespace {

constexpr int kJpegQuality = 90;
constexpr char kDoubled[] = "-2x";

std::optional<QByteArray> Drawing(const QString& name) {
    QStringList parts = name.split(QLatin1Char('_'));
    QFile file(QStringLiteral(":/devserver/pictures/%1.svg").arg(parts.takeFirst()));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray drawing = file.readAll();
    for (const QString& part : parts) {
        const QByteArray shown = "<g id=\"" + part.toUtf8() + '"';
        const QByteArray hidden = shown + " display=\"none\"";
        if (!drawing.contains(hidden)) {
            return std::nullopt;
        }
        drawing.replace(hidden, shown);
    }
    return drawing;
}

// White background for formats without transparency.
QImage Paint(const QByteArray& drawing, int scale, bool isOpaque) {
    QSvgRenderer renderer(drawing);
    QImage image(renderer.defaultSize() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(isOpaque ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    return image;
}

std::string Encode(const QImage& image, const char* format, int quality) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, quality);
    return buffer.data().toStdString();
}

}  // namespace

std::optional<Picture> CPictures::Find(const std::string& name) {
    if (const auto found = m_painted.find(name); found != m_painted.end()) {
        return found->second;
    }
    if (name.find('/') != std::string::npos) {
        return std::nullopt;
    }
    const QFileInfo file(QString::fromStdString(name));
    QString base = file.completeBaseName();
    const int scale = base.endsWith(QLatin1String(kDoubled)) ? 2 : 1;
    base.chop(scale == 2 ? int(sizeof(kDoubled)) - 1 : 0);
    const auto drawing = Drawing(base);
    if (!drawing) {
        return std::nullopt;
    }
    if (file.suffix() == QLatin1String("png")) {
        return m_painted[name] = {"image/png", Encode(Paint(*drawing, scale, false), "PNG", -1)};
    }
    if (file.suffix() == QLatin1String("jpg")) {
        return m_painted[name] = {"image/jpeg", Encode(Paint(*drawing, scale, true), "JPG", kJpegQuality)};
    }
    return std::nullopt;
}

}  // namespace devserver
