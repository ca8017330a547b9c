#pragma once

#include <map>
#include <optional>
#include <string>

namespace devserver {

struct Picture {
    std::string type;  // MIME type
    std::string bytes;
};

/// Pictures from built-in drawings, painted once: NAME.png and NAME.jpg in their own size, NAME-2x.png and NAME-2x.jpg
/// in twice that size. A NAME can be DRAWING_PART_PART: the drawing with these of its hidden parts, each a
/// `<g id="PART" display="none">`. Needs neither a display nor fonts, as the drawings hold their words as outlines.
/// Main thread.
class CPictures {
public:
    /// Returns nothing if no picture has the name.
    std::optional<Picture> Find(const std::string& name);

private:
    std::map<std::string, Picture> m_painted;
};

}  // namespace devserver
