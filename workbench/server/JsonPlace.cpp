#include "workbench/server/JsonPlace.h"

#include <QRegularExpression>
#include <algorithm>

#include "framework/JsonText.h"
#include "workbench/ControlClient.h"
#include "workbench/diagnosis/Literal.h"

namespace {

/// Converts bytes of UTF-8 to characters.
int Characters(const QByteArray& bytes, ptrdiff_t count) {
    return QString::fromUtf8(bytes.left(int(count))).size();
}

}  // namespace

std::optional<json_place::Place> json_place::AtKey(const QString& text, const QString& path) {
    static const QRegularExpression separators("[.\\[\\]]+"_q);
    const QByteArray bytes = text.toUtf8();
    std::string error;
    const auto json = host::ParseJson(bytes.toStdString(), error);
    if (!json) {
        return std::nullopt;
    }
    const Json::Value* at = &*json;
    const QStringList names = path.split(separators, Qt::SkipEmptyParts);
    for (const QString& name : names) {
        bool isIndex = false;
        const uint index = name.toUInt(&isIndex);
        const Json::Value& child = !at->isArray()                  ? json::Member(*at, name.toStdString())
                                   : isIndex && index < at->size() ? (*at)[index]
                                                                   : Json::Value::nullSingleton();
        if (&child == &Json::Value::nullSingleton()) {
            break;
        }
        at = &child;
    }
    const int start = Characters(bytes, at->getOffsetStart());
    return Place{start, Characters(bytes, at->getOffsetLimit()) - start};
}

std::optional<json_place::Place> json_place::OfError(const QString& text, const QString& error) {
    static const QRegularExpression syntax("^not JSON.*Line (\\d+), Column (\\d+)"_q);
    const auto match = syntax.match(error);
    if (!match.hasMatch()) {
        return AtKey(text, error.section(": "_q, 0, 0));
    }
    const QStringList lines = text.split(QLatin1Char('\n'));
    const int line = std::min(match.captured(1).toInt() - 1, lines.size() - 1);
    const int before = lines.mid(0, line).join(QLatin1Char('\n')).size() + (line > 0 ? 1 : 0);
    const int column = Characters(lines[line].toUtf8(), match.captured(2).toInt() - 1);
    return Place{before + column, std::min(1, lines[line].size() - column)};
}
