#pragma once

#include <cstddef>
#include <cstring>

/// Returns the index of a virtual operation in the table of its class. Specific to the ABI of this platform.
template <class Member>
std::ptrdiff_t PlaceOf(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / std::ptrdiff_t(sizeof(void*));
}
