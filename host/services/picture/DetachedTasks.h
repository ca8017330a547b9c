#pragma once

#include <QObject>
#include <functional>
#include <memory>

/// Runs tasks on threads that nobody waits for. Main thread.
class CDetachedTasks : public QObject {
public:
    /// Runs on the main thread, and not after the destructor.
    using Result = std::function<void()>;
    /// Owns its data, because it can outlive this object.
    using Task = std::function<Result()>;

    CDetachedTasks();
    ~CDetachedTasks() override;

    /// Runs the task on a thread of its own. It throws nothing. Returns false if there is no thread.
    bool Start(Task task);

    /// Number of tasks whose results have not run.
    int RunningCount() const { return m_nRunning; }

private:
    struct Link;

    const std::shared_ptr<Link> m_link;
    int m_nRunning = 0;
};
