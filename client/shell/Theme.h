#pragma once

#include <QColor>
#include <functional>

class QObject;
class QWidget;

/// The look of the client in the current theme. Painting code uses these colours, everything else the style sheet.
/// Main thread.
namespace theme {

/// The name of a colour in the themes' palettes. The colour depends on the theme, so it is looked up where it is used:
/// QColor(theme::kUp).
struct ColorName {
    const char* name;
    explicit operator QColor() const;
};

constexpr ColorName kWindow{"window"};
constexpr ColorName kText{"text"};
constexpr ColorName kMuted{"muted"};
constexpr ColorName kFaint{"disabled"};
constexpr ColorName kLine{"line"};
constexpr ColorName kAccent{"accent"};
constexpr ColorName kOnAccent{"onAccent"};
constexpr ColorName kUp{"up"};
constexpr ColorName kDown{"down"};
constexpr ColorName kWarning{"warning"};

/// The colour of a price's change.
constexpr ColorName OfChange(double change) {
    return change > 0 ? kUp : change < 0 ? kDown : kMuted;
}

/// Sets the application's style and follows changes of the theme. Must be called once, before the first widget.
void Install();

/// The style sheet of the current theme. A colour name that the palette lacks is logged.
QString StyleSheet();

/// Sets the font for a display language.
void SetLanguage(int languageId);

/// Calls `show` now and after each change of the theme while `context` exists.
void OnThemeChange(QObject* context, const std::function<void()>& show);

/// Applies the style sheet again after a change of a property that it selects by.
void Repolish(QWidget* widget);

}  // namespace theme
