#include "observe/ObservedPictures.h"

#include "observe/Observation.h"
#include "picture/PictureService.h"

namespace {

HttpSeen SeenOf(unsigned long load, const QString& url) {
    HttpSeen seen;
    seen.isPicture = true;
    seen.task = load;
    seen.url = url.toStdString();
    return seen;
}

HttpSeen SeenOf(const PictureEnd& end) {
    HttpSeen seen = SeenOf(end.load, end.url);
    seen.kind = end.result == kHttpOk ? HttpSeen::EnKind::Answered : HttpSeen::EnKind::Failed;
    seen.result = end.result;
    seen.status = end.status;
    seen.durationMs = end.durationMs;
    seen.bodyBytes = end.bytes;
    seen.fromCache = end.fromCache;
    seen.refusal = end.refusal;
    return seen;
}

}  // namespace

CObservedPictures::CObservedPictures(CPictureService& pictures, CObservation& observation) {
    connect(&pictures, &CPictureService::Asked, this,
            [&observation](unsigned long load, const QString& url) { observation.Report(SeenOf(load, url)); });
    connect(&pictures, &CPictureService::Ended, this,
            [&observation](const PictureEnd& end) { observation.Report(SeenOf(end)); });
}
