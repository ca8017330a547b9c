#pragma once

#include <fmt/format.h>

#include <QObject>
#include <string>

#include "framework/log.h"

/// The module's log lines: "[<subsystem>] <message>", under the module tag "ZRGrowth".
class CGrowthBizLogUtil : public QObject {
    Q_OBJECT

public:
    /// The subsystem that writes a line. Its name is the tag of the line.
    enum ModuleType : int {
        AIChat = 0,
        Ad = 1,
        Premium = 2,
        Vip = 3,
    };
    Q_ENUM(ModuleType)

    CGrowthBizLogUtil() = delete;

    /// Returns the name of the value; empty for an unknown value.
    static std::string GetModuleName(ModuleType type);

    /// Writes one line. `source` is the root-relative path of the source without its ending.
    static void WriteLog(const char* source, int line, const char* function, ZRLogType severity, ModuleType type,
                         const std::string& message);
};

/// The tag of every log line and assertion of this module.
constexpr const char* kGrowthModuleTag = "ZRGrowth";

namespace growth_log {

// The first argument holds the text for the compile-time check of its fields. The second is the same text, which the
// macro below cannot separate from the other arguments.
template <class Text, class... Args>
std::string Format(const Text& text, const char* /*sameText*/, const Args&... args) {
    return fmt::format(text, args...);
}

}  // namespace growth_log

#define GROWTH_FIRST(first, ...) first
#define GROWTH_LOG(severity, ...)                                                            \
    CGrowthBizLogUtil::WriteLog(GROWTH_SOURCE, __LINE__, __func__, severity, kLogModuleType, \
                                growth_log::Format(FMT_STRING(GROWTH_FIRST(__VA_ARGS__, "")), __VA_ARGS__))

/// Logs one line: a format literal and its arguments. The call site is recorded, so call it from named functions, not
/// from lambdas. The build defines GROWTH_SOURCE; the calling source defines the constant `kLogModuleType`.
#define LogInfo(...) GROWTH_LOG(kZRLogInfo, __VA_ARGS__)
#define LogError(...) GROWTH_LOG(kZRLogError, __VA_ARGS__)

#define GROWTH_TEXT_OF(number) #number
#define GROWTH_LINE_TEXT(number) GROWTH_TEXT_OF(number)
/// The call site of a bus handle.
#define GROWTH_HERE "[ZRGrowth]:" GROWTH_SOURCE "@" GROWTH_LINE_TEXT(__LINE__)
