#pragma once

#include <QColor>
#include <functional>

class QObject;
class QWidget;

/// The look of the client in the theme of the moment. What is painted by hand names its colours here, all else
/// the style sheet. Main thread.
namespace theme {

/// A colour by its name in the themes' palettes. Which colour that is changes with the theme, so it is kept by
/// name and looked up where it is used: QColor(theme::kUp).
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

/// Puts the application into its look and has it follow the theme. Called once, ahead of the first widget.
void Install();

/// The style sheet of the theme of the moment. A name in it that the palette lacks is logged.
QString StyleSheet();

/// Chooses the font that suits the display language.
void SetLanguage(int languageId);

/// Runs `show` now and at each change of the theme, as long as `context` lives.
void Keep(QObject* context, const std::function<void()>& show);

/// Has the style sheet looked at again after a property that it selects by has changed.
void Repolish(QWidget* widget);

}  // namespace theme
