#include "picture/DetachedTasks.h"

#include <mutex>
#include <system_error>
#include <thread>

struct CDetachedTasks::Link {
    std::mutex mutex;
    CDetachedTasks* owner = nullptr;  // null after its destructor
};

CDetachedTasks::CDetachedTasks() : m_link(std::make_shared<Link>()) {
    m_link->owner = this;
}

CDetachedTasks::~CDetachedTasks() {
    const std::lock_guard<std::mutex> lock(m_link->mutex);
    m_link->owner = nullptr;
}

bool CDetachedTasks::Start(Task task) {
    const auto run = [link = m_link, task = std::move(task)] {
        const Result result = task();
        const std::lock_guard<std::mutex> lock(link->mutex);
        if (CDetachedTasks* owner = link->owner) {
            const auto finish = [owner, result] {
                --owner->m_nRunning;
                result();
            };
            QMetaObject::invokeMethod(owner, finish, Qt::QueuedConnection);
        }
    };
    try {
        std::thread(run).detach();
    } catch (const std::system_error&) {
        return false;
    }
    ++m_nRunning;
    return true;
}
