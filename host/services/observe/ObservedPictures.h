#pragma once

#include <QObject>

class CObservation;
class CPictureService;

/// Reports the fetches of pictures as calls over HTTP, without their bytes. No port of its own as the other taps are:
/// what came from the disk, and what of a server, the service alone knows. A fetch whose guard is gone has no end to
/// report. Main thread. Both must outlive it.
class CObservedPictures : public QObject {
public:
    CObservedPictures(CPictureService& pictures, CObservation& observation);
};
