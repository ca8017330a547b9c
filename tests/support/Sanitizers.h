#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZR_SLOWED_DOWN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZR_SLOWED_DOWN 1
#endif
#endif

/// Whether a sanitizer slows this process down and adds to its memory.
#ifdef ZR_SLOWED_DOWN
inline constexpr bool kSlowedDown = true;
#else
inline constexpr bool kSlowedDown = false;
#endif
