#include "Hex.h"

#include <QByteArray>
#include <algorithm>

namespace devserver {

std::string ToHex(const std::string& bytes) {
    return QByteArray::fromStdString(bytes).toHex().toStdString();
}

std::optional<std::string> FromHex(const std::string& digits) {
    // The toolkit's decoder skips what is no digit.
    const auto isDigit = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    };
    if (digits.size() % 2 != 0 || !std::all_of(digits.begin(), digits.end(), isDigit)) {
        return std::nullopt;
    }
    return QByteArray::fromHex(QByteArray::fromStdString(digits)).toStdString();
}

}  // namespace devserver
