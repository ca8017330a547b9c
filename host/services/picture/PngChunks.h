#pragma once

#include <string>

/// The parts of a PNG. Any thread.
namespace png_chunks {

/// Returns the PNG with only the chunks that the decoder needs. The decoder expands texts and profiles without a limit.
/// Empty for a PNG that is cut or does not begin with its header.
std::string Essential(const std::string& bytes);

/// Properties of the pixels, from the result of Essential.
struct PixelKind {
    int depth = 0;        // bits of a channel
    int colorType = 0;    // as in the header
    bool hasKey = false;  // there is a chunk tRNS
};
PixelKind PixelKindOf(const std::string& essential);

}  // namespace png_chunks
