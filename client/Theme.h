#pragma once

#include <QColor>

class QWidget;

/// The look of the client. Colours that are painted by hand stand here, all others in the style sheet.
namespace theme {

constexpr QRgb kText = 0xFFD9DFE9;
constexpr QRgb kMuted = 0xFF8591A5;
constexpr QRgb kFaint = 0xFF566074;
constexpr QRgb kLine = 0xFF262D39;
constexpr QRgb kAccent = 0xFF4C8DFF;
constexpr QRgb kOnAccent = 0xFFFFFFFF;
constexpr QRgb kUp = 0xFF35B980;
constexpr QRgb kDown = 0xFFE5605A;
constexpr QRgb kWarning = 0xFFD9A441;

/// The colour of a price's change.
constexpr QRgb OfChange(double change) {
    return change > 0 ? kUp : change < 0 ? kDown : kMuted;
}

/// Puts the application into its look. Called once, ahead of the first widget.
void Install();

/// Chooses the font that suits the display language.
void SetLanguage(int languageId);

/// Has the style sheet looked at again after a property that it selects by has changed.
void Repolish(QWidget* widget);

}  // namespace theme
