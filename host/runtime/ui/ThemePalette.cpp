#include "ui/ThemePalette.h"

#include <QFile>
#include <QRegularExpression>

#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace host {
namespace {

constexpr CHostLog kLog("Theme");

CThemePalette ReadResource(int number) {
    QFile file(QStringLiteral(":/themes/%1.json").arg(number));
    std::string error;
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString().toStdString();
    } else if (auto palette = CThemePalette::Read(file.readAll().toStdString(), error)) {
        return std::move(*palette);
    }
    kLog.Error(FMT_STRING("Palette {}: {}"), file.fileName().toStdString(), error);
    return CThemePalette();
}

// A style sheet does not know the form #aarrggbb.
QString Written(const QColor& color) {
    return color.alpha() == 255 ? color.name()
                                : QStringLiteral("rgba(%1, %2, %3, %4)")
                                      .arg(color.red())
                                      .arg(color.green())
                                      .arg(color.blue())
                                      .arg(color.alpha());
}

}  // namespace

const CThemePalette& CThemePalette::Of(zr_ui_theme::Manager::Theme theme) {
    // Never destroyed: painting code may outlive static objects.
    static auto* palettes = new std::map<int, CThemePalette>;
    const auto found = palettes->find(theme);
    return found != palettes->end() ? found->second : palettes->emplace(theme, ReadResource(theme)).first->second;
}

std::optional<CThemePalette> CThemePalette::Read(const std::string& json, std::string& error) {
    static const QRegularExpression form(QStringLiteral("^#(?:[0-9a-f]{2})?[0-9a-f]{6}$"));
    const auto colors = ParseJson(json, error);
    if (!colors) {
        return std::nullopt;
    }
    if (!colors->isObject()) {
        error = "must be an object of names and colours";
        return std::nullopt;
    }
    CThemePalette palette;
    for (const std::string& name : colors->getMemberNames()) {
        const Json::Value& value = (*colors)[name];
        if (!value.isString() || !form.match(QString::fromStdString(value.asString())).hasMatch()) {
            error = name + ": must be a colour as #rrggbb or #aarrggbb";
            return std::nullopt;
        }
        palette.m_colors.emplace(name, QColor(QString::fromStdString(value.asString())));
    }
    return palette;
}

QColor CThemePalette::Color(std::string_view name) const {
    const auto found = m_colors.find(name);
    return found == m_colors.end() ? QColor() : found->second;
}

QStringList CThemePalette::Names() const {
    QStringList names;
    for (const auto& [name, color] : m_colors) {
        names << QString::fromStdString(name);
    }
    return names;
}

QString CThemePalette::Fill(const QString& text, QStringList& unknown) const {
    static const QRegularExpression mark(QStringLiteral("@([A-Za-z0-9_]+)"));
    QString filled;
    int done = 0;
    auto marks = mark.globalMatch(text);
    while (marks.hasNext()) {
        const auto found = marks.next();
        const QColor color = Color(found.captured(1).toStdString());
        filled += text.midRef(done, found.capturedStart() - done);
        filled += color.isValid() ? Written(color) : found.captured();
        done = found.capturedEnd();
        if (!color.isValid()) {
            unknown << found.captured(1);
        }
    }
    return filled + text.midRef(done);
}

}  // namespace host
