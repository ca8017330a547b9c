#pragma once

#include <QObject>
#include <utility>

#include "framework/assertion.h"

namespace FrameWork {

/// Calls `QObject::connect`, in any of its forms, and checks the result.
/// Returns the connection.
/// Thread: as for `QObject::connect`.
/// Failure: a connection that cannot be made (null object, unknown signature, second unique connection) raises the
/// assertion "connection" on behalf of `module`. The assertion names this header; the toolkit's own warning names
/// the objects.
template <class... Args>
QMetaObject::Connection ConnectChecked(const char* module, Args&&... args) {
    QMetaObject::Connection connection = QObject::connect(std::forward<Args>(args)...);
    if (!connection) {
        _FW_OnAssertFailed(kAssetDefensive, "", module, __FILE__, __LINE__, "connection");
    }
    return connection;
}

}  // namespace FrameWork
