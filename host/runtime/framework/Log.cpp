#include "framework/log.h"

#include "framework/ILog.h"
#include "framework/Ports.h"
#include "framework/assertion.h"

namespace FrameWork {
namespace {

std::string Text(const char* text) {
    return text ? std::string(text) : std::string();
}

}  // namespace

void _WriteLogRaw(const char* file, int line, const char* function, ZRLogType type, const char* module,
                  const QString& text, signed char /*channel*/) {
    const host::PortsLock ports;
    if (ports->log) {
        ports->log->Write(LogRecord{Text(file), line, Text(function), type, Text(module), text});
    }
}

void _FW_OnAssertFailed(AssetType type, const char* detail, const char* module, const char* file, int line,
                        const char* expression) {
    const host::PortsLock ports;
    if (ports->log) {
        ports->log->AssertionFailed(
            AssertionRecord{type, Text(detail), Text(module), Text(file), line, Text(expression)});
    }
}

}  // namespace FrameWork
