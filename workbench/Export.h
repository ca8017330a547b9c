#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

class CRedactor;
class CLogModel;
class CTraceModel;

/// Writes the recorded entries of the workbench to a file that can be shared.
namespace workbench_export {

/// A JSON object with one list for each model, named after its format, and one for the log. All texts and undecoded
/// bytes are redacted.
QByteArray Json(const std::vector<const CTraceModel*>& models, const CLogModel& log, const CRedactor& aliases);

/// Writes the whole file or nothing. Returns the reason of a failure, or an empty text.
QString Write(const QString& path, const QByteArray& json);

}  // namespace workbench_export
