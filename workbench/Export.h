#pragma once

#include <QJsonObject>

#include "workbench/EventModel.h"
#include "workbench/Redactor.h"

/// Files with the recorded events of the workbench, which can be shared and opened again.
namespace workbench_export {

/// Everything that a file contains.
struct Recording {
    struct List {
        EventFormatPtr format;
        std::vector<CEventModel::RowPtr> rows;
    };
    qint64 timeMs = 0;
    QJsonObject state;
    std::vector<List> lists;
};

/// Writes the whole file or nothing, and creates its folder. Texts and undecoded bytes are redacted. Returns the reason
/// of a failure, or an empty text. Callable from any thread.
QString Write(const QString& path, const Recording& recording, const CRedactor& aliases);

/// Reads a file for the lists of `recording`, which have no rows yet. Returns the reason of a failure, or an empty
/// text. Callable from any thread.
QString Read(const QString& path, Recording& recording);

}  // namespace workbench_export
