#pragma once

#include <QString>

/// A UTF-8 literal as text.
inline QString operator""_q(const char* text, size_t size) {
    return QString::fromUtf8(text, int(size));
}
