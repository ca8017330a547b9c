#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

/// A decoded picture. Several frames are repeated after the last.
struct Picture {
    struct Frame {
        QImage image;
        int millis = 0;  // duration of the frame
    };
    std::vector<Frame> frames;  // at least one, all of the same size
};

/// Pictures by URL, fetched and decoded on other threads. Main thread.
class IPictures {
public:
    virtual ~IPictures() = default;

    /// Calls `done` once, later, on the main thread, with null on failure. It is not called if the guard is gone. The
    /// picture covers `size` in device pixels with its aspect ratio kept. With `moving` it may have several frames.
    /// The guard is not null.
    using Done = std::function<void(std::shared_ptr<const Picture> picture)>;
    virtual void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) = 0;
};
