#pragma once

#include <QObject>

class CTraceLog;
class CPictureService;

/// Records loads of pictures as HTTP calls without bodies. It listens to the service, which alone knows whether the
/// cache or a server answered. A load whose guard was destroyed has no recorded result. Main thread. The service and
/// the trace log must outlive it.
class CPicturesRecorder : public QObject {
public:
    CPicturesRecorder(CPictureService& pictures, CTraceLog& traceLog);
};
