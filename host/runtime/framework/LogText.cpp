#include "framework/LogText.h"

namespace host {
namespace {

bool IsForging(uint code) {
    // Most text, judged without a table.
    if (code >= 0x20 && code < 0x7F) {
        return false;
    }
    switch (QChar::category(code)) {
        case QChar::Other_Control:
        case QChar::Other_Format:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return false;
    }
}

}  // namespace

std::string EscapedLogText(const QString& text) {
    QString escaped;
    escaped.reserve(text.size());
    int kept = 0;  // up to there the text is in `escaped`
    for (int at = 0; at < text.size(); ++at) {
        uint code = text[at].unicode();
        const int from = at;
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text[at], text[at + 1]);
            ++at;
        }
        if (!IsForging(code)) {
            continue;
        }
        escaped += text.midRef(kept, from - kept);
        kept = at + 1;
        if (code <= 0xFF) {
            escaped += QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
        } else if (code <= 0xFFFF) {
            escaped += QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
        } else {
            escaped += QStringLiteral("\\U%1").arg(code, 8, 16, QLatin1Char('0'));
        }
    }
    escaped += text.midRef(kept);
    return escaped.toStdString();
}

}  // namespace host
