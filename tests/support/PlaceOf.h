#pragma once

#include <cstddef>
#include <cstring>

/// The place of a virtual operation in its class's table, as this platform's calls find it.
template <class Member>
std::ptrdiff_t PlaceOf(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / std::ptrdiff_t(sizeof(void*));
}
