#pragma once

#include <QObject>
#include <utility>

#include "framework/assertion.h"

namespace FrameWork {

/// `QObject::connect` with its result checked, in every form that `QObject::connect` has.
/// A connection that could not be made (null object, unknown signature, a second unique one) raises
/// the assertion "connection" in the name of `module` and is otherwise ignored. The place that the
/// assertion names is this header's: the call site is read off the warning that the toolkit prints.
template <class... Args>
QMetaObject::Connection ConnectChecked(const char* module, Args&&... args) {
    QMetaObject::Connection connection = QObject::connect(std::forward<Args>(args)...);
    if (!connection) {
        _FW_OnAssertFailed(kAssetDefensive, "", module, __FILE__, __LINE__, "connection");
    }
    return connection;
}

}  // namespace FrameWork
