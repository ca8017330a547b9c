#pragma once

#include <QByteArray>

/// Pictures of 4,000 by 3,000 pixels, each as demanding as what the judge lets pass may be: with noise in them, so
/// that there is something to send and to decode. The same at each call.
namespace large_pictures {

/// By an encoder of the toolkit's: "jpeg", "png".
QByteArray Encoded(const char* format);

/// Moves: a whole frame, and some that change a part of it.
QByteArray Gif();

/// A drawing of many thousand shapes.
QByteArray Svg();

}  // namespace large_pictures
