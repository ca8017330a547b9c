#pragma once

#include <map>
#include <optional>
#include <string>

namespace devserver {

struct Picture {
    std::string type;  // of its content
    std::string bytes;
};

/// The pictures of the ads: drawings that are built in, NAME.svg as they are, NAME.png and NAME.jpg painted in their
/// own size, once. Main thread; needs no display and no fonts, as their words are drawn as well.
class CPictures {
public:
    /// Nothing for a name that no picture has.
    std::optional<Picture> Find(const std::string& name);

private:
    std::map<std::string, Picture> m_painted;
};

}  // namespace devserver
