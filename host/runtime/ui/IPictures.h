#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

/// A picture ready to be painted. One frame stands still; several begin again after the last.
struct Picture {
    struct Frame {
        QImage image;
        int millis = 0;  // how long it stands
    };
    std::vector<Frame> frames;  // never empty, all of one size
};

/// Pictures from the web, fetched and decoded away from the main thread. Main thread.
class IPictures {
public:
    virtual ~IPictures() = default;

    /// Completes later, once, on the main thread, with null where there is no picture; not at all once the guard is
    /// gone. The picture covers `size` (in device pixels) and keeps its proportions. With `moving` it may have
    /// several frames. The guard may not be null.
    using Done = std::function<void(std::shared_ptr<const Picture> picture)>;
    virtual void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) = 0;
};
