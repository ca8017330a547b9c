#include "log/LibraryMessages.h"

#include <google/protobuf/stubs/logging.h>

#include <atomic>

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kQtLog("Qt");
constexpr host::CHostLog kProtobufLog("Protobuf");

std::atomic<QtMessageHandler> g_fnFormerQt{nullptr};
google::protobuf::LogHandler* g_fnFormerProtobuf = nullptr;
// Writing a line can lead to another message.
thread_local bool t_bWriting = false;

void WriteLine(const host::CHostLog& log, bool error, const std::string& text) {
    if (!t_bWriting) {
        t_bWriting = true;
        log.Write(error ? kZRLogError : kZRLogInfo, text);
        t_bWriting = false;
    }
}

void OnQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    WriteLine(kQtLog, type != QtDebugMsg && type != QtInfoMsg,
              fmt::format(FMT_STRING("{}: {}"), context.category ? context.category : "default", text.toStdString()));
    if (const QtMessageHandler former = g_fnFormerQt) {
        former(type, context, text);
    }
}

void OnProtobufMessage(google::protobuf::LogLevel level, const char* file, int line, const std::string& text) {
    WriteLine(kProtobufLog, level != google::protobuf::LOGLEVEL_INFO,
              fmt::format(FMT_STRING("{}:{}: {}"), file, line, text));
}

}  // namespace

CLibraryMessages::CLibraryMessages() {
    g_fnFormerProtobuf = google::protobuf::SetLogHandler(OnProtobufMessage);
    g_fnFormerQt = qInstallMessageHandler(OnQtMessage);
}

CLibraryMessages::~CLibraryMessages() {
    qInstallMessageHandler(g_fnFormerQt);
    google::protobuf::SetLogHandler(g_fnFormerProtobuf);
}
