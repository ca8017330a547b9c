#pragma once

#include <QByteArray>

/// Pictures of 4,000 by 3,000 pixels near the limits of the image validator. They contain noise, so that their size and
/// decoding time are large. Each call returns the same bytes.
namespace large_pictures {

/// Encoded by the toolkit; `format` is "jpeg" or "png".
QByteArray Encoded(const char* format);

/// An animation: a whole frame, and frames that change a part of it.
QByteArray Gif();

}  // namespace large_pictures
