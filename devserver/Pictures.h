#pragma once

#include <map>
#include <optional>
#include <string>

namespace devserver {

struct Picture {
    std::string type;  // MIME type
    std::string bytes;
};

/// Pictures of the ads, from built-in drawings: NAME.svg unchanged, NAME.png and NAME.jpg painted once in their own
/// size. Needs neither a display nor fonts, as the drawings hold their words as outlines. Main thread.
class CPictures {
public:
    /// Returns nothing if no picture has the name.
    std::optional<Picture> Find(const std::string& name);

private:
    std::map<std::string, Picture> m_painted;
};

}  // namespace devserver
