#pragma once

/// How an icon takes its colour from the theme.
namespace ZIconColorStyle {
enum type : int {
    normal = 0,     // as text of minor weight
    heading = 1,    // as a title
    accent = 2,     // as what can be done
    onAccent = 3,   // on a filled button
    warning = 4,    // as what went wrong
    onPicture = 5,  // light on a dark disc, for what lies over a picture
};
}  // namespace ZIconColorStyle

/// What a widget is in when it paints.
namespace ZWidgetState {
enum type : int {
    normal = 0,
    hover = 1,
    pressed = 2,
    disabled = 3,
};
}  // namespace ZWidgetState
