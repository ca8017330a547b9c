#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "support/ScriptedLog.h"

/// Applies the parser `read` to the log lines since the last call. Returns each recognised line with its values.
template <class ParsedLine>
std::vector<std::pair<decltype(ParsedLine::line), std::vector<std::string>>> ReadLines(
    CScriptedLog& log, std::optional<ParsedLine> (*read)(const QString& text)) {
    std::vector<std::pair<decltype(ParsedLine::line), std::vector<std::string>>> lines;
    for (const LogLine& line : log.Lines()) {
        if (const auto said = read(QString::fromStdString(line.text))) {
            std::vector<std::string> values;
            for (const QString& value : said->values) {
                values.push_back(value.toStdString());
            }
            lines.emplace_back(said->line, values);
        }
    }
    log.Forget();
    return lines;
}

/// Matches a parsed line.
template <class EnLine>
auto ReadAs(EnLine line, std::vector<std::string> values = {}) {
    return ::testing::Pair(line, ::testing::ElementsAreArray(std::move(values)));
}
