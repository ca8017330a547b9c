#include "DataFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

namespace {

constexpr mode_t kForOthers = S_IRWXG | S_IRWXO;

/// Takes the permissions of other users from what belongs to this user alone.
void MakePrivate(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat info {};
    // A folder with the sticky bit, as /tmp, is shared on purpose.
    if (lstat(name.constData(), &info) == 0 && info.st_uid == geteuid() && (info.st_mode & S_ISVTX) == 0 &&
        !S_ISLNK(info.st_mode)) {
        chmod(name.constData(), info.st_mode & ~kForOthers & 07777);
    }
}

}  // namespace

void PrepareDataFolder(const QString& path) {
    umask(kForOthers);
    const QDir folder(path);
    folder.mkpath(QStringLiteral("."));
    MakePrivate(folder.absolutePath());
    const QStringList own{QStringLiteral("client.*"), QStringLiteral("reports.*")};
    for (const QFileInfo& file : folder.entryInfoList(own, QDir::Files)) {
        MakePrivate(file.filePath());
    }
}
