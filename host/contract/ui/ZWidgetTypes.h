#pragma once

/// The role that selects an icon's colour in the theme.
namespace ZIconColorStyle {
enum type : int {
    normal = 0,     // secondary text
    heading = 1,    // title
    accent = 2,     // action
    onAccent = 3,   // text of a filled button
    warning = 4,    // failure
    onPicture = 5,  // light on a dark disc, for icons over a picture
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
