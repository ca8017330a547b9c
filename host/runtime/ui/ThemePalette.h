#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "framework/export.h"
#include "ui/zr_ui_theme.h"

namespace host {

/// The named colours of one theme. All themes define the same names.
class ZRHOST_API CThemePalette {
public:
    /// The palette of resources/themes/<number>.json, read once. Main thread.
    static const CThemePalette& Of(zr_ui_theme::Manager::Theme theme);

    /// Reads an object of names and colours written "#rrggbb" or "#aarrggbb". Empty on failure, with the reason in
    /// `error`.
    static std::optional<CThemePalette> Read(const std::string& json, std::string& error);

    /// Invalid for an unknown name.
    QColor Color(std::string_view name) const;
    QStringList Names() const;

    /// Returns `text` with each @name replaced by its colour. A mark consists of letters, digits and underscores.
    /// Unknown names stay and are added to `unknown`.
    QString Fill(const QString& text, QStringList& unknown) const;

private:
    std::map<std::string, QColor, std::less<>> m_colors;
};

}  // namespace host
