#include <string>

// Asks for the size where it means emptiness.
bool Planted(const std::string& text) {
    return text.size() == 0;
}
