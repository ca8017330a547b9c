#pragma once

#include <QApplication>

class QAbstractEventDispatcher;

namespace bench {

/// The application of a benchmark that needs no screen. The arguments are the benchmark's own.
class COffscreen : public QApplication {
public:
    /// Takes over the dispatcher, if there is one.
    explicit COffscreen(char** argv, QAbstractEventDispatcher* dispatcher = nullptr)
        : QApplication(Prepared(dispatcher), argv) {}

private:
    static int& Prepared(QAbstractEventDispatcher* dispatcher) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        if (dispatcher) {
            setEventDispatcher(dispatcher);
        }
        static int count = 1;
        return count;
    }
};

}  // namespace bench
