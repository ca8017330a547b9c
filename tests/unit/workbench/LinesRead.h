#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "support/ScriptedLog.h"

/// What `read`, a reader of log lines, makes of all that was written since the last call: each line that it knows,
/// with its values.
template <class Said>
std::vector<std::pair<decltype(Said::line), std::vector<std::string>>> ReadLines(
    CScriptedLog& log, std::optional<Said> (*read)(const QString& text)) {
    std::vector<std::pair<decltype(Said::line), std::vector<std::string>>> lines;
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

/// A line that was read so.
template <class EnLine>
auto ReadAs(EnLine line, std::vector<std::string> values = {}) {
    return ::testing::Pair(line, ::testing::ElementsAreArray(std::move(values)));
}
