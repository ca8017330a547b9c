#include "workbench/Export.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include "workbench/LogModel.h"
#include "workbench/Redactor.h"
#include "workbench/TraceModel.h"

namespace workbench_export {
namespace {

QString Iso(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs, Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonArray FieldsOf(const std::vector<FieldNode>& fields, const CRedactor& aliases) {
    QJsonArray list;
    for (const FieldNode& field : fields) {
        QJsonObject json{{QStringLiteral("name"), aliases.Redacted(field.name)}};
        if (field.isWithheld) {
            json[QStringLiteral("withheld")] = true;
        } else if (field.raw) {
            json[QStringLiteral("hex")] = aliases.RedactedHex(*field.raw);
        } else if (field.children.empty()) {
            json[QStringLiteral("value")] = aliases.Redacted(field.value);
        } else {
            json[QStringLiteral("fields")] = FieldsOf(field.children, aliases);
        }
        list.append(json);
    }
    return list;
}

// A preview is skipped: the detail contains the whole value, and a truncated secret could not be redacted.
bool IsPreview(const QString& title) {
    return title == QStringLiteral("Value");
}

QJsonObject RowOf(const CTraceModel& model, int row, const CRedactor& aliases) {
    const std::vector<QString> titles = model.Format().Titles();
    QJsonObject cells;
    for (size_t column = 1; column < titles.size(); ++column) {
        const QString cell = model.CellsAt(row).value(int(column) - 1);
        if (!cell.isEmpty() && !IsPreview(titles[column])) {
            cells[titles[column]] = aliases.Redacted(cell);
        }
    }
    return {{QStringLiteral("time"), Iso(model.At(row).timeMs)},
            {QStringLiteral("row"), cells},
            {QStringLiteral("detail"), FieldsOf(model.Format().Detail(model.At(row)), aliases)}};
}

QJsonObject LineOf(const CLogModel& log, int row, const CRedactor& aliases) {
    return {{QStringLiteral("time"), log.index(row, CLogModel::Time).data().toString()},
            {QStringLiteral("severity"), int(log.At(row).severity)},
            {QStringLiteral("tag"), aliases.Redacted(log.At(row).tag)},
            {QStringLiteral("text"), aliases.Redacted(log.At(row).readable)},
            {QStringLiteral("place"), aliases.Redacted(log.At(row).place)}};
}

}  // namespace

QByteArray Json(const std::vector<const CTraceModel*>& models, const CLogModel& log, const CRedactor& aliases) {
    QJsonObject all{{QStringLiteral("exported"), Iso(QDateTime::currentMSecsSinceEpoch())}};
    for (const CTraceModel* model : models) {
        QJsonArray rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            rows.append(RowOf(*model, row, aliases));
        }
        all[model->Format().Name().toLower()] = rows;
    }
    QJsonArray lines;
    for (int row = 0; row < log.rowCount(); ++row) {
        lines.append(LineOf(log, row, aliases));
    }
    all[QStringLiteral("log")] = lines;
    return QJsonDocument(all).toJson();
}

QString Write(const QString& path, const QByteArray& json) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.commit()) {
        return file.errorString();
    }
    return QString();
}

}  // namespace workbench_export
