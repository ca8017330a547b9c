#include "framework/LogText.h"

namespace host {
namespace {

bool IsForging(ushort code) {
    const bool control = code < 0x20 || (code >= 0x7F && code <= 0x9F);
    const bool separator = code == 0x2028 || code == 0x2029;
    const bool direction =
        code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return control || separator || direction;
}

}  // namespace

std::string EscapedLogText(const QString& text) {
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar character : text) {
        const ushort code = character.unicode();
        if (!IsForging(code)) {
            escaped += character;
        } else if (code <= 0xFF) {
            escaped += QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
        } else {
            escaped += QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
        }
    }
    return escaped.toStdString();
}

}  // namespace host
