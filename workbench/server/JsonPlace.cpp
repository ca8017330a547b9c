#include "workbench/server/JsonPlace.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "framework/JsonText.h"
#include "workbench/ControlClient.h"

namespace {

using json_place::Place;

/// Removes the path's first step and returns its value. Null if there is none. Keys can contain dots, so the longest
/// key that fits is taken.
const Json::Value* Step(const Json::Value& json, QString& path) {
    static const QRegularExpression index(QStringLiteral("^\\[(\\d+)\\]\\.?"));
    const auto match = index.match(path);
    if (json.isArray() && match.hasMatch()) {
        const uint item = match.captured(1).toUInt();
        path.remove(0, match.capturedLength());
        return item < json.size() ? &json[Json::ArrayIndex(item)] : nullptr;
    }
    QString longest;
    for (const std::string& member : json.isObject() ? json.getMemberNames() : std::vector<std::string>()) {
        const QString key = QString::fromStdString(member);
        const bool ends = path.size() == key.size() ||
                          (path.size() > key.size() &&
                           (path[key.size()] == QLatin1Char('.') || path[key.size()] == QLatin1Char('[')));
        if (path.startsWith(key) && ends && key.size() > longest.size()) {
            longest = key;
        }
    }
    if (longest.isEmpty()) {
        return nullptr;
    }
    path.remove(0, longest.size());
    if (path.startsWith(QLatin1Char('.'))) {
        path.remove(0, 1);
    }
    return &json::Member(json, longest.toStdString());
}

/// Converts bytes of UTF-8 to characters.
int Characters(const QByteArray& bytes, ptrdiff_t count) {
    return QString::fromUtf8(bytes.left(int(count))).size();
}

}  // namespace

std::optional<Place> json_place::AtKey(const QString& text, const QString& path) {
    const QByteArray bytes = text.toUtf8();
    std::string error;
    const auto json = host::ParseJson(bytes.toStdString(), error);
    if (!json) {
        return std::nullopt;
    }
    const Json::Value* at = &*json;
    QString rest = path;
    while (!rest.isEmpty()) {
        const Json::Value* next = Step(*at, rest);
        if (!next) {
            break;
        }
        at = next;
    }
    const int start = Characters(bytes, at->getOffsetStart());
    return Place{start, Characters(bytes, at->getOffsetLimit()) - start};
}

std::optional<Place> json_place::OfError(const QString& text, const QString& error) {
    static const QRegularExpression syntax(QStringLiteral("Line (\\d+), Column (\\d+)"));
    const auto match = syntax.match(error);
    if (error.startsWith(QStringLiteral("not JSON")) && match.hasMatch()) {
        const QStringList lines = text.split(QLatin1Char('\n'));
        const int line = std::min(match.captured(1).toInt() - 1, lines.size() - 1);
        int start = 0;
        for (int before = 0; before < line; ++before) {
            start += lines[before].size() + 1;
        }
        const QString start8 = QString::fromUtf8(lines[line].toUtf8().left(match.captured(2).toInt() - 1));
        return Place{start + start8.size(), std::min(1, lines[line].size() - start8.size())};
    }
    return AtKey(text, error.section(QStringLiteral(": "), 0, 0));
}

QStringList json_place::Errors(const QString& answer) {
    return answer.split(QStringLiteral("; "), Qt::SkipEmptyParts);
}
