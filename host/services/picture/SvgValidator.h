#pragma once

#include <string>

/// Validates the text of an SVG before it is rendered. Any thread.
namespace svg_validator {

/// Returns whether the bytes may be an SVG.
bool LooksLikeSvg(const std::string& bytes);

/// Returns whether the drawing is complete and refers to nothing outside. Entities, scripts, embedded pictures and
/// nested repetition are refused, with the reason.
bool IsHarmless(const std::string& bytes, std::string& reason);

}  // namespace svg_validator
