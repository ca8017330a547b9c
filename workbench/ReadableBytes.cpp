#include "workbench/ReadableBytes.h"

#include <QTextCodec>
#include <algorithm>

namespace readable {
namespace {

bool IsUnprintable(QChar character) {
    return character.category() == QChar::Other_Control && character != QLatin1Char('\n') &&
           character != QLatin1Char('\t') && character != QLatin1Char('\r');
}

}  // namespace

std::optional<QString> Utf8(const std::string& bytes) {
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(), int(bytes.size()), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0 || std::any_of(text.begin(), text.end(), IsUnprintable)) {
        return std::nullopt;
    }
    return text;
}

QString Hex(const std::string& bytes, size_t limit) {
    const auto shown = int(std::min(bytes.size(), limit));
    const QString hex = QString::fromLatin1(QByteArray(bytes.data(), shown).toHex(' '));
    return bytes.size() > limit ? hex + QStringLiteral(" …") : hex;
}

QString Text(const std::string& bytes) {
    return Utf8(bytes).value_or(Hex(bytes));
}

std::optional<QString> FromLatin1(const QString& text) {
    bool isAscii = true;
    for (const QChar character : text) {
        if (character.unicode() > 0xFF) {
            return std::nullopt;
        }
        isAscii = isAscii && character.unicode() < 0x80;
    }
    return isAscii ? std::nullopt : Utf8(text.toLatin1().toStdString());
}

}  // namespace readable
