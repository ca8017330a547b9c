#include "Digits.h"

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cctype>

namespace devserver {

std::string ToHex(const std::string& bytes) {
    return QByteArray::fromStdString(bytes).toHex().toStdString();
}

std::optional<std::string> FromHex(const std::string& digits) {
    // QByteArray::fromHex() skips all other characters.
    const auto isDigit = [](unsigned char c) { return std::isxdigit(c) != 0; };
    if (digits.size() % 2 != 0 || !std::all_of(digits.begin(), digits.end(), isDigit)) {
        return std::nullopt;
    }
    return QByteArray::fromHex(QByteArray::fromStdString(digits)).toStdString();
}

std::optional<uint64_t> ReadNumber(const std::string& text) {
    bool isNumber = false;
    const qulonglong number = QString::fromStdString(text).toULongLong(&isNumber);
    return isNumber && std::to_string(number) == text ? std::make_optional(uint64_t(number)) : std::nullopt;
}

}  // namespace devserver
