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

constexpr const char* kFormat = "zrclient-workbench";
constexpr int kVersion = 2;
constexpr const char* kTones[] = {"normal", "bad", "expected"};

QString Iso(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs, Qt::UTC).toString(Qt::ISODateWithMs);
}

qint64 FromIso(const QJsonValue& text) {
    return QDateTime::fromString(text.toString(), Qt::ISODateWithMs).toMSecsSinceEpoch();
}

QJsonValue Redacted(const QJsonValue& json, const CRedactor& aliases) {
    if (json.isString()) {
        return aliases.Redacted(json.toString());
    }
    if (json.isDouble()) {
        const QString number = QString::number(json.toDouble(), 'g', 17);
        const QString redacted = aliases.Redacted(number);
        return redacted == number ? json : QJsonValue(redacted);
    }
    if (json.isArray()) {
        QJsonArray array;
        const QJsonArray items = json.toArray();
        for (const QJsonValue& item : items) {
            array.append(Redacted(item, aliases));
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
    return json;
}

QJsonArray JsonOf(const std::vector<FieldNode>& fields, const CRedactor& aliases) {
    QJsonArray list;
    for (const FieldNode& field : fields) {
        QJsonObject json{{QStringLiteral("name"), aliases.Redacted(field.name)}};
        if (field.isWithheld) {
            json[QStringLiteral("withheld")] = true;
        } else if (field.raw) {
            json[QStringLiteral("hex")] = aliases.RedactedHex(*field.raw);
        } else if (!field.value.isEmpty() || field.children.empty()) {
            json[QStringLiteral("value")] = aliases.Redacted(field.value);
        }
        if (!field.children.empty()) {
            json[QStringLiteral("fields")] = JsonOf(field.children, aliases);
        }
        list.append(json);
    }
    return list;
}

std::vector<FieldNode> FieldsOf(const QJsonArray& list) {
    std::vector<FieldNode> fields;
    for (const QJsonValue& value : list) {
        const QJsonObject json = value.toObject();
        fields.push_back({json[QStringLiteral("name")].toString(),
                          json[QStringLiteral("withheld")].toBool() ? QStringLiteral("(withheld)")
                          : json.contains(QStringLiteral("hex"))    ? json[QStringLiteral("hex")].toString()
                                                                    : json[QStringLiteral("value")].toString(),
                          {},
                          FieldsOf(json[QStringLiteral("fields")].toArray())});
    }
    return fields;
}

QJsonObject JsonOf(const Recording::List& list, const EventRow& row, const CRedactor& aliases) {
    QJsonObject json{{QStringLiteral("time"), Iso(row.timeMs)},
                     {QStringLiteral("tone"), QLatin1String(kTones[int(row.tone)])}};
    for (size_t column = 0; column < list.columns.size(); ++column) {
        const QString cell = row.cells.value(int(column));
        if (list.columns[column].key && !cell.isEmpty()) {
            json[QLatin1String(list.columns[column].key)] = aliases.Redacted(cell);
        }
    }
    QJsonObject choices;
    for (size_t filter = 0; filter < list.filters.size(); ++filter) {
        choices[QString::fromLatin1(list.filters[filter].part).toLower()] = row.choices.value(int(filter));
    }
    json[QStringLiteral("filters")] = choices;
    if (row.detail) {
        json[QStringLiteral("detail")] = JsonOf(row.detail(), aliases);
    }
    return json;
}

CEventModel::RowPtr RowOf(const Recording::List& list, const QJsonObject& json) {
    auto row = std::make_shared<EventRow>();
    row->timeMs = FromIso(json[QStringLiteral("time")]);
    for (int tone = 0; tone < int(std::size(kTones)); ++tone) {
        if (json[QStringLiteral("tone")].toString() == QLatin1String(kTones[tone])) {
            row->tone = EnTone(tone);
        }
    }
    for (const IEventFormat::Column& column : list.columns) {
        row->cells << (column.key ? json[QLatin1String(column.key)].toString() : QString());
    }
    const QJsonObject choices = json[QStringLiteral("filters")].toObject();
    for (const IEventFormat::Filter& filter : list.filters) {
        row->choices << choices[QString::fromLatin1(filter.part).toLower()].toString();
    }
    row->detail = [fields = json[QStringLiteral("detail")].toArray()] { return FieldsOf(fields); };
    return row;
}

}  // namespace

Recording::List ListOf(const CEventModel& model) {
    return {model.Format().Name().toLower(), model.Format().Columns(), model.Format().Filters(), model.Rows()};
}

// The rows are written one by one, so that the file is never in memory as a whole.
QString Write(const QString& path, const Recording& recording, const CRedactor& aliases) {
    const QString folder = QFileInfo(path).absolutePath();
    if (path.isEmpty() || !QDir().mkpath(folder)) {
        return QStringLiteral("The folder %1 can't be created").arg(folder);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    }
    const QJsonObject head{{QStringLiteral("format"), QLatin1String(kFormat)},
                           {QStringLiteral("version"), kVersion},
                           {QStringLiteral("exported"), Iso(recording.timeMs)},
                           {QStringLiteral("state"), Redacted(recording.state, aliases)}};
    QByteArray text = QJsonDocument(head).toJson();
    text.truncate(text.lastIndexOf('\n', text.lastIndexOf('}')));
    for (const Recording::List& list : recording.lists) {
        text += ",\n    \"" + list.name.toUtf8() + "\": [";
        const char* separator = "\n        ";
        for (const CEventModel::RowPtr& row : list.rows) {
            text += separator + QJsonDocument(JsonOf(list, *row, aliases)).toJson(QJsonDocument::Compact);
            separator = ",\n        ";
            file.write(text);
            text.clear();
        }
        text += "\n    ]";
    }
    file.write(text + "\n}\n");
    return file.commit() ? QString() : QStringLiteral("%1: %2").arg(path, file.errorString());
}

QString Read(const QString& path, Recording& recording) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    }
    const QByteArray text = file.readAll();
    std::string reason;
    // The toolkit's reader accepts what is not JSON.
    if (!host::ParseJson(text.toStdString(), reason)) {
        return QStringLiteral("%1 is no JSON: %2").arg(path, QString::fromStdString(reason).simplified());
    }
    const QJsonObject all = QJsonDocument::fromJson(text).object();
    if (all[QStringLiteral("format")].toString() != QLatin1String(kFormat) ||
        all[QStringLiteral("version")].toInt() != kVersion) {
        return QStringLiteral("%1 is no export of this workbench").arg(path);
    }
    recording.timeMs = FromIso(all[QStringLiteral("exported")]);
    recording.state = all[QStringLiteral("state")].toObject();
    for (Recording::List& list : recording.lists) {
        list.rows.clear();
        const QJsonArray rows = all[list.name].toArray();
        for (const QJsonValue& row : rows) {
            list.rows.push_back(RowOf(list, row.toObject()));
        }
    }
    return QString();
}

}  // namespace workbench_export
