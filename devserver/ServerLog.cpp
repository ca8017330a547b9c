#include "ServerLog.h"

#include <cstdio>

namespace devserver {

void LogLine(const std::string& text) {
    std::string line = "zrdevserver: ";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            line += fmt::format(FMT_STRING("\\x{:02x}"), byte);
        } else {
            line += c;
        }
    }
    line += '\n';
    // In one call, so that lines of other threads do not mix with it.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace devserver
