#include "tracing/PicturesRecorder.h"

#include "picture/PictureService.h"
#include "tracing/TraceLog.h"

namespace {

HttpTrace TraceOf(unsigned long load, const QString& url) {
    HttpTrace trace;
    trace.isPicture = true;
    trace.task = load;
    trace.url = url.toStdString();
    return trace;
}

HttpTrace TraceOf(const PictureEnd& end) {
    HttpTrace trace = TraceOf(end.load, end.url);
    trace.kind = end.result == kHttpOk ? HttpTrace::EnKind::Answered : HttpTrace::EnKind::Failed;
    trace.result = end.result;
    trace.status = end.status;
    trace.durationMs = end.durationMs;
    trace.bodyBytes = end.bytes;
    trace.fromCache = end.fromCache;
    trace.refusal = end.refusal;
    return trace;
}

}  // namespace

CPicturesRecorder::CPicturesRecorder(CPictureService& pictures, CTraceLog& traceLog) {
    connect(&pictures, &CPictureService::Asked, this,
            [&traceLog](unsigned long load, const QString& url) { traceLog.Record(TraceOf(load, url)); });
    connect(&pictures, &CPictureService::Ended, this,
            [&traceLog](const PictureEnd& end) { traceLog.Record(TraceOf(end)); });
}
