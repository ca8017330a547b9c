#pragma once

#include <string>

/// Looks at a drawing's text before anybody draws it. Any thread.
namespace svg_validator {

/// Whether it may be a drawing at all.
bool LooksLikeSvg(const std::string& bytes);

/// Whether the drawing is whole, keeps to itself (no entities, no references to anything outside, no code, no
/// pictures and documents in it) and does not multiply itself. Otherwise `reason` says why not.
bool IsHarmless(const std::string& bytes, std::string& reason);

}  // namespace svg_validator
