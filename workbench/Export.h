#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

class CAliases;
class CLogModel;
class CSeenModel;

/// What the workbench has seen, as one file to be given away.
namespace workbench_export {

/// A JSON object with a list for each model, named after its format, and one for the log. All texts are
/// redacted, and so are bytes that nobody could read.
QByteArray Json(const std::vector<const CSeenModel*>& models, const CLogModel& log, const CAliases& aliases);

/// Writes the whole file or nothing. Returns why it could not; empty if it could.
QString Write(const QString& path, const QByteArray& json);

}  // namespace workbench_export
