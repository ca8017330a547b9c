#include "core/url.h"

#include <QUrl>
#include <cctype>

// The toolkit's own decoding also changes sequences that are no hexadecimal digits.
std::string core::url::Decode(const std::string& text) {
    const auto isHex = [&text](size_t at) { return at < text.size() && std::isxdigit(uint8_t(text[at])) != 0; };
    std::string decoded;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '%' && isHex(at + 1) && isHex(at + 2)) {
            decoded += char(std::stoi(text.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else {
            decoded += text[at];
        }
    }
    return decoded;
}

std::string core::url::GetHost(const std::string& url) {
    const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    return parsed.isValid() ? parsed.host().toStdString() : std::string();
}
