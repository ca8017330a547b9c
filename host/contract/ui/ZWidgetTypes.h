#pragma once

/// The role that selects an icon's colour in the theme.
namespace ZIconColorStyle {
enum type : int {
    /// Secondary text.
    normal = 0,
    /// Title.
    heading = 1,
    /// Action.
    accent = 2,
    /// Text of a filled button.
    onAccent = 3,
    /// Failure.
    warning = 4,
    /// Light on a dark disc, for icons over a picture.
    onPicture = 5,
};
}  // namespace ZIconColorStyle

/// The state in which a widget is painted.
namespace ZWidgetState {
enum type : int {
    normal = 0,
    hover = 1,
    pressed = 2,
    disabled = 3,
};
}  // namespace ZWidgetState
