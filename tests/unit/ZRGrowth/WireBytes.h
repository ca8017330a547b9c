#pragma once

#include <initializer_list>
#include <string>

/// Returns the bytes of a message on the wire.
inline std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes.push_back(char(value));
    }
    return bytes;
}
