#include "store/StoreFiles.h"

#include <QDir>
#include <QFileInfo>

namespace store_files {

QString MoveAside(const QString& path, const QDateTime& now) {
    const QString stem = path + QStringLiteral(".corrupt-") + now.toString(QStringLiteral("yyyyMMddTHHmmss"));
    QString aside = stem;
    for (int number = 2; QFileInfo::exists(aside); ++number) {
        aside = stem + QLatin1Char('-') + QString::number(number);
    }
    if (!QDir().rename(path, aside)) {
        return {};
    }
    for (const char* ending : {"-wal", "-shm"}) {
        QDir().rename(path + QLatin1String(ending), aside + QLatin1String(ending));
    }
    return aside;
}

qint64 Bytes(const QString& path) {
    return QFileInfo(path).size() + QFileInfo(path + QStringLiteral("-wal")).size();
}

bool HasLog(const QString& path) {
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

}  // namespace store_files
