#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QPointer>
#include <QThread>

#include "core/post.h"

namespace growth {

/// Creates a manager and moves it to the main thread. The first use may come from another thread, whose objects could
/// have no children of the main thread and get no posted tasks.
template <class Manager>
Manager* NewManager() {
    auto* manager = new Manager;
    if (QCoreApplication::instance()) {
        manager->moveToThread(QCoreApplication::instance()->thread());
    }
    return manager;
}

/// The same for a manager that starts at its first use. Init() runs on the main thread alone: within the first use
/// there. A first use on another thread posts it and does not wait; until it has run the manager gives its defaults.
template <class Manager>
class CStartedManager {
public:
    CStartedManager() : m_pManager(NewManager<Manager>()) {
        if (!IsOnMainThread()) {
            core::post::ToMain(
                QPointer<QObject>(m_pManager), [this] { Get(); }, nullptr);
        }
    }

    Manager* Get() {
        // A use on the main thread may come before the posted start: a login then must not be lost.
        if (IsOnMainThread() && !m_bStarted) {
            m_bStarted = true;
            m_pManager->Init();
        }
        return m_pManager;
    }

private:
    bool IsOnMainThread() const { return m_pManager->thread() == QThread::currentThread(); }

    Manager* const m_pManager;
    bool m_bStarted = false;  // main thread
};

}  // namespace growth
