#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <utility>

/// Only function types have a definition, see below.
template <class Signature>
class CSafeFunction;

/// A function that is tied to a guard object. It is copyable, and a default-constructed one is empty.
/// Thread: the guard's thread. The check and the call are not atomic.
/// Ownership: the guard is not owned. What the function captures lives as long as the last copy, also after the
/// guard's end.
template <class Result, class... Args>
class CSafeFunction<Result(Args...)> {
public:
    /// An empty function.
    CSafeFunction() = default;
    /// A null guard makes an empty function.
    CSafeFunction(QObject* guard, std::function<Result(Args...)> function)
        : m_pGuard(guard), m_fnTarget(std::move(function)) {}

    /// Returns whether the guard is alive and the function is set.
    explicit operator bool() const { return m_pGuard && m_fnTarget; }

    /// Calls the function and returns its result.
    /// Failure: a default-constructed result, without a call, if the guard is gone or the function is not set.
    Result operator()(Args... args) const {
        if (!*this) {
            return Result();
        }
        return m_fnTarget(std::forward<Args>(args)...);
    }

private:
    QPointer<QObject> m_pGuard;
    std::function<Result(Args...)> m_fnTarget;
};
