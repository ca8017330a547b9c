#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QThread>

namespace growth {

/// Makes a manager and gives it to the main thread: the first use may come from another one, and an object
/// of that thread could neither have children made on the main thread nor get posted tasks.
template <class Manager>
Manager* NewManager() {
    auto* manager = new Manager;
    if (QCoreApplication::instance()) {
        manager->moveToThread(QCoreApplication::instance()->thread());
    }
    return manager;
}

/// The same for a manager that starts at its first use.
template <class Manager>
Manager* NewStartedManager() {
    auto* manager = NewManager<Manager>();
    manager->Init();
    return manager;
}

}  // namespace growth
