#include "workbench/TimeText.h"

#include <QDateTime>

#include "core/time_date.h"
#include "workbench/diagnosis/LogTable.h"

QString time_text::Zone() {
    return QDateTime::currentDateTime().timeZoneAbbreviation();
}

QString time_text::Local(qint64 timeMs) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(timeMs);
    return time.toString(time.date() == QDate::currentDate() ? "HH:mm:ss.zzz"_q : "yyyy-MM-dd HH:mm:ss.zzz"_q);
}

QString time_text::ServerOffset() {
    constexpr qint64 kMinOffsetMs = 2'000;
    const qint64 offset = core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
    return qAbs(offset) < kMinOffsetMs
               ? QString()
               : (offset < 0 ? "-"_q : "+"_q) + log_table::Duration((qAbs(offset) + 500) / 1000);
}
