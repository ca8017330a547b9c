#include "workbench/rights/ModuleLines.h"

namespace module_lines {
namespace {

struct Pattern {
    EnLine line;
    QStringList parts;  // the texts between the values
};

std::vector<Pattern> Patterns() {
    std::vector<Pattern> patterns;
    for (const Line& line : All()) {
        patterns.push_back({line.line, QString::fromLatin1(line.text).split(QStringLiteral("{}"))});
    }
    return patterns;
}

/// The values of `text` between the parts, one word each; nothing if the parts differ.
std::optional<QStringList> ValuesOf(const QString& text, const QStringList& parts) {
    if (!text.startsWith(parts.first()) || !text.endsWith(parts.last())) {
        return std::nullopt;
    }
    QStringList values;
    int from = parts.first().size();
    for (int index = 1; index < parts.size(); ++index) {
        const bool isLast = index == parts.size() - 1;
        const int to = isLast ? text.size() - parts.last().size() : text.indexOf(parts[index], from);
        if (to < from) {
            return std::nullopt;
        }
        values << text.mid(from, to - from);
        if (values.back().isEmpty() || values.back().contains(QLatin1Char(' '))) {
            return std::nullopt;
        }
        from = to + parts[index].size();
    }
    return from == text.size() ? std::make_optional(values) : std::nullopt;
}

}  // namespace

const std::vector<Line>& All() {
    static const std::vector<Line> lines{
        {EnLine::TimerReady, "[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready"},
        {EnLine::TimerStops, "[Premium] Premium Data Handler Module Uninit Begin"},
        {EnLine::ForLogin, "[Premium] User Login Received, Request All Premium Data From Server"},
        {EnLine::ForHour, "[Premium] Hourly Timer Fired, Refresh All Premium Data"},
        {EnLine::ForLanguage, "[Premium] Language Changed, Refresh All Premium Data"},
        {EnLine::SentAll, "[Premium] Send Request For All Premium Access, Session = {}, Server Push = {}"},
        {EnLine::SentList,
         "[Premium] Send Request For Custom Premium Access, Count = {}, Session = {}, Server Push = {}"},
        {EnLine::UnknownSession, "[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = {}"},
        {EnLine::ChannelError, "[Premium] Request Failed On Channel Error, Session = {}, Error = {}"},
        {EnLine::BadBytes, "[Premium] Parse Response Failed, Invalid Protobuf Data"},
        {EnLine::NoCode, "[Premium] Parse Response Failed, Missing Code Field"},
        {EnLine::OtherCode, "[Premium] Server Returned Error Code = {}"},
        {EnLine::PushTaken,
         "[Premium] Premium Change Push Received, Need All Access = {}, Custom Access Count = {}, "
         "Will Refresh After {} Ms"},
        {EnLine::VipSent, "[Vip] Send Request For Vip Status From Server"},
        {EnLine::VipRefused, "[Vip] Vip Status Response Failed, Error = {}, Cmd = {}"},
        {EnLine::VipBadBytes, "[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data"},
        {EnLine::VipPushTaken, "[Vip] Vip Status Change Push Received, Will Refresh After {} Ms"},
    };
    return lines;
}

std::optional<ParsedLine> Read(const QString& text) {
    static const std::vector<Pattern> patterns = Patterns();
    for (const Pattern& pattern : patterns) {
        if (auto values = ValuesOf(text, pattern.parts)) {
            return ParsedLine{pattern.line, std::move(*values)};
        }
    }
    return std::nullopt;
}

}  // namespace module_lines
