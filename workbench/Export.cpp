#include "workbench/Export.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include "framework/JsonText.h"

namespace workbench_export {
namespace {

constexpr int kVersion = 3;
// Read only. clazy:excludeall=non-pod-global-static
const QString kFormat = "zrclient-workbench"_q;
const QStringList kTones{"normal"_q, "bad"_q, "expected"_q};

QString Iso(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs, Qt::UTC).toString(Qt::ISODateWithMs);
}

qint64 FromIso(const QJsonValue& text) {
    return QDateTime::fromString(text.toString(), Qt::ISODateWithMs).toMSecsSinceEpoch();
}

QJsonValue Redacted(const QJsonValue& json, const CRedactor& aliases) {
    if (json.isArray()) {
        QJsonArray array = json.toArray();
        for (auto item = array.begin(); item != array.end(); ++item) {
            *item = Redacted(*item, aliases);
        }
        return array;
    }
    if (json.isObject()) {
        QJsonObject object;
        const QJsonObject whole = json.toObject();
        for (auto member = whole.begin(); member != whole.end(); ++member) {
            object[aliases.Redacted(member.key())] = Redacted(member.value(), aliases);
        }
        return object;
    }
    const QString text = json.isDouble() ? QString::number(json.toDouble(), 'g', 17) : json.toString();
    const QString redacted = aliases.Redacted(text);
    return redacted == text ? json : redacted;
}

QJsonArray JsonOf(const std::vector<FieldNode>& fields, const CRedactor& aliases) {
    QJsonArray list;
    for (const FieldNode& field : fields) {
        const QString value = field.isWithheld ? "(withheld)"_q
                              : field.raw      ? aliases.RedactedHex(*field.raw)
                                               : aliases.Redacted(field.value);
        QJsonObject json{{"name"_q, aliases.Redacted(field.name)}, {field.raw ? "hex"_q : "value"_q, value}};
        if (!field.children.empty()) {
            json["fields"_q] = JsonOf(field.children, aliases);
        }
        list.append(json);
    }
    return list;
}

std::vector<FieldNode> FieldsOf(const QJsonArray& list) {
    std::vector<FieldNode> fields;
    for (const QJsonValue& json : list) {
        const QString value = json["hex"_q].toString(json["value"_q].toString());
        fields.push_back({json["name"_q].toString(), value, {}, FieldsOf(json["fields"_q].toArray())});
    }
    return fields;
}

/// The key of a column; empty if it is not exported.
QString KeyOf(const QString& column) {
    return column.section(QLatin1Char('='), 1);
}

QJsonObject JsonOf(const EventFormat& format, const EventRow& row, const CRedactor& aliases) {
    QJsonObject json{{"time"_q, Iso(row.timeMs)},
                     {"tone"_q, kTones[int(row.tone)]},
                     {"filters"_q, QJsonArray::fromStringList(row.choices)}};
    for (int column = 0; column < format.columns.size(); ++column) {
        const QString key = KeyOf(format.columns[column]);
        const QString cell = row.cells.value(column);
        if (!key.isEmpty() && !cell.isEmpty()) {
            json[key] = aliases.Redacted(cell);
        }
    }
    if (row.detail) {
        json["detail"_q] = JsonOf(row.detail(), aliases);
    }
    return json;
}

CEventModel::RowPtr RowOf(const EventFormat& format, const QJsonValue& json) {
    auto row = std::make_shared<EventRow>();
    row->timeMs = FromIso(json["time"_q]);
    row->tone = EnTone(std::max(0, kTones.indexOf(json["tone"_q].toString())));
    row->choices = json["filters"_q].toVariant().toStringList();
    for (const QString& column : format.columns) {
        row->cells << json[KeyOf(column)].toString();
    }
    row->detail = [fields = json["detail"_q].toArray()] { return FieldsOf(fields); };
    return row;
}

}  // namespace

// The rows are written one by one, so that the file is never in memory as a whole.
QString Write(const QString& path, const Recording& recording, const CRedactor& aliases) {
    const QString folder = QFileInfo(path).absolutePath();
    if (path.isEmpty() || !QDir().mkpath(folder)) {
        return "The folder %1 can't be created"_q.arg(folder);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return "%1: %2"_q.arg(path, file.errorString());
    }
    const QJsonObject head{{"format"_q, kFormat},
                           {"version"_q, kVersion},
                           {"exported"_q, Iso(recording.timeMs)},
                           {"state"_q, Redacted(recording.state, aliases)}};
    QByteArray text = QJsonDocument(head).toJson();
    text.truncate(text.lastIndexOf('\n', text.lastIndexOf('}')));
    for (const Recording::List& list : recording.lists) {
        text += ",\n    \"" + list.format->name.toLower().toUtf8() + "\": [";
        const char* separator = "\n        ";
        for (const CEventModel::RowPtr& row : list.rows) {
            text += separator + QJsonDocument(JsonOf(*list.format, *row, aliases)).toJson(QJsonDocument::Compact);
            separator = ",\n        ";
            file.write(text);
            text.clear();
        }
        text += "\n    ]";
    }
    file.write(text + "\n}\n");
    return file.commit() ? QString() : "%1: %2"_q.arg(path, file.errorString());
}

QString Read(const QString& path, Recording& recording) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return "%1: %2"_q.arg(path, file.errorString());
    }
    const QByteArray text = file.readAll();
    std::string reason;
    // The toolkit's reader accepts what is not JSON.
    if (!host::ParseJson(text.toStdString(), reason)) {
        return "%1 is no JSON: %2"_q.arg(path, QString::fromStdString(reason).simplified());
    }
    const QJsonObject all = QJsonDocument::fromJson(text).object();
    if (all["format"_q] != kFormat || all["version"_q] != kVersion) {
        return "%1 is no export of this workbench"_q.arg(path);
    }
    recording.timeMs = FromIso(all["exported"_q]);
    recording.state = all["state"_q].toObject();
    for (Recording::List& list : recording.lists) {
        list.rows.clear();
        const QJsonArray rows = all[list.format->name.toLower()].toArray();
        for (const QJsonValue& row : rows) {
            list.rows.push_back(RowOf(*list.format, row));
        }
    }
    return QString();
}

}  // namespace workbench_export
