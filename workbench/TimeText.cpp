#include "workbench/TimeText.h"

#include <QDateTime>

#include "core/time_date.h"

namespace time_text {
namespace {

constexpr qint64 kMinOffsetMs = 2'000;

qint64 OffsetMs() {
    const qint64 offset = core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
    return qAbs(offset) < kMinOffsetMs ? 0 : offset;
}

}  // namespace

QString Zone() {
    return QDateTime::currentDateTime().timeZoneAbbreviation();
}

QString Local(qint64 timeMs) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(timeMs);
    const QString format = QStringLiteral("HH:mm:ss.zzz");
    return time.toString(time.date() == QDate::currentDate() ? format : QStringLiteral("yyyy-MM-dd ") + format);
}

QString ServerOffset() {
    const qint64 seconds = (qAbs(OffsetMs()) + 500) / 1000;
    if (seconds == 0) {
        return QString();
    }
    QStringList parts;
    for (const auto& [unit, name] : {std::pair<qint64, const char*>{3600, "h"}, {60, "min"}, {1, "s"}}) {
        const qint64 count = seconds / unit % (unit == 3600 ? seconds + 1 : 60);
        if (count > 0 || unit == 1) {
            parts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(name));
        }
    }
    return (OffsetMs() < 0 ? QStringLiteral("-") : QStringLiteral("+")) + parts.join(QLatin1Char(' '));
}

QString OfServer(qint64 serverMs) {
    const QString local = Local(serverMs - OffsetMs());
    return OffsetMs() == 0 ? local : QStringLiteral("%1 (server's clock: %2)").arg(local, Local(serverMs));
}

}  // namespace time_text
