#include "Theme.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include "core/lang.h"
#include "framework/HostLog.h"

namespace {

constexpr host::HostLog kLog("Theme");
constexpr int kFontPixels = 13;

// One typeface for all languages, in the shapes that the language writes its characters in.
QStringList Families(int languageId) {
    switch (languageId) {
        case core::lang::kLanguageTraditionalChinese:
            return {QStringLiteral("Noto Sans CJK TC"), QStringLiteral("DejaVu Sans")};
        case core::lang::kLanguageJapanese:
            return {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("DejaVu Sans")};
        default:
            return {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("DejaVu Sans")};
    }
}

QString StyleSheet() {
    QFile file(QStringLiteral(":/themes/1.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        kLog.Error(FMT_STRING("Style sheet {}: {}"), file.fileName().toStdString(), file.errorString().toStdString());
        return QString();
    }
    return QString::fromUtf8(file.readAll());
}

QPalette Palette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xFF12161D));
    palette.setColor(QPalette::Base, QColor(0xFF171C25));
    palette.setColor(QPalette::AlternateBase, QColor(0xFF1A202A));
    palette.setColor(QPalette::Button, QColor(0xFF202733));
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF262D39));
    palette.setColor(QPalette::Highlight, QColor(theme::kAccent));
    palette.setColor(QPalette::HighlightedText, QColor(theme::kOnAccent));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(theme::kText));
        palette.setColor(QPalette::Disabled, role, QColor(theme::kFaint));
    }
    palette.setColor(QPalette::PlaceholderText, QColor(theme::kFaint));
    return palette;
}

}  // namespace

namespace theme {

void Install() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(Palette());
}

void SetLanguage(int languageId) {
    QFont font;
    font.setFamilies(Families(languageId));
    font.setPixelSize(kFontPixels);
    // With a style sheet in place a new font does not reach every widget: the sheet goes on last.
    qApp->setStyleSheet(QString());
    QApplication::setFont(font);
    qApp->setStyleSheet(StyleSheet());
}

void Repolish(QWidget* widget) {
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

}  // namespace theme
