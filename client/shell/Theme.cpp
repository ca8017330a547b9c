#include "Theme.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include "core/lang.h"
#include "framework/HostLog.h"
#include "ui/ThemePalette.h"

namespace {

constexpr host::CHostLog kLog("Theme");
constexpr int kFontPixels = 13;

const host::CThemePalette& Current() {
    return host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme());
}

// Latin texts use a Latin typeface: a CJK one draws the apostrophe as wide as a character. The others use one typeface
// with the glyph variants of the language.
QStringList Families(int languageId) {
    switch (languageId) {
        case core::lang::kLanguageTraditionalChinese:
            return {QStringLiteral("Noto Sans CJK TC"), QStringLiteral("DejaVu Sans")};
        case core::lang::kLanguageJapanese:
            return {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("DejaVu Sans")};
        case core::lang::kLanguageEnglish:
        case core::lang::kLanguageFrench:
            return {QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("DejaVu Sans"),
                    QStringLiteral("Noto Sans CJK SC")};
        default:
            return {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("DejaVu Sans")};
    }
}

QPalette Palette() {
    const host::CThemePalette& colors = Current();
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const char* name) { palette.setColor(role, colors.Color(name)); };
    set(QPalette::Window, "window");
    set(QPalette::Base, "surface");
    set(QPalette::AlternateBase, "stripe");
    set(QPalette::Button, "button");
    set(QPalette::ToolTipBase, "tooltip");
    set(QPalette::Highlight, "accentFill");
    set(QPalette::HighlightedText, "onAccent");
    set(QPalette::Link, "accent");
    set(QPalette::LinkVisited, "accent");
    set(QPalette::Light, "border");
    set(QPalette::Midlight, "line");
    set(QPalette::Mid, "line");
    set(QPalette::Dark, "border");
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText}) {
        set(role, "text");
        palette.setColor(QPalette::Disabled, role, QColor(theme::kFaint));
    }
    set(QPalette::PlaceholderText, "disabled");
    return palette;
}

void ShowTheme() {
    QApplication::setPalette(Palette());
    qApp->setStyleSheet(theme::StyleSheet());
}

}  // namespace

namespace theme {

ColorName::operator QColor() const {
    return Current().Color(name);
}

void Install() {
    // Without it a menu's icons have half the pixels of the screen.
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    OnThemeChange(qApp, ShowTheme);
}

QString StyleSheet() {
    QFile file(QStringLiteral(":/themes/client.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        kLog.Error(FMT_STRING("Style sheet {}: {}"), file.fileName().toStdString(), file.errorString().toStdString());
        return QString();
    }
    QString sheet = QString::fromUtf8(file.readAll());
    sheet.replace(QStringLiteral("@theme"), QString::number(zr_ui_theme::Manager::instance()->getTheme()));
    QStringList unknown;
    sheet = Current().Fill(sheet, unknown);
    if (!unknown.isEmpty()) {
        kLog.Error(FMT_STRING("The style sheet names colours that the theme lacks: {}"),
                   unknown.join(QLatin1Char(' ')).toStdString());
    }
    return sheet;
}

void SetLanguage(int languageId) {
    QFont font;
    font.setFamilies(Families(languageId));
    font.setPixelSize(kFontPixels);
    // A style sheet keeps a new font from some widgets, so it is set after the font.
    qApp->setStyleSheet(QString());
    QApplication::setFont(font);
    qApp->setStyleSheet(StyleSheet());
}

void OnThemeChange(QObject* context, const std::function<void()>& show) {
    show();
    QObject::connect(zr_ui_theme::Manager::instance(), &zr_ui_theme::Manager::themeChanged, context, show);
}

void Repolish(QWidget* widget) {
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

}  // namespace theme
