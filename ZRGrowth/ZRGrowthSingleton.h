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

/// The same for a manager that starts at its first use. Init() always runs on the main thread: there inside the first
/// use. A first use on another thread posts it and does not wait; the manager returns its defaults until then.
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
        // A use on the main thread may precede the posted start, and its login must not be lost.
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
