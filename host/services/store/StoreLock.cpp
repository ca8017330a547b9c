#include "store/StoreLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

CStoreLock::EnResult CStoreLock::Take() {
    Release();
    // Closed in children: a server that outlives the client would keep the lock.
    m_nFile = open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (m_nFile < 0) {
        return errno == EACCES || errno == EROFS || errno == EPERM ? EnResult::kReadOnly : EnResult::kFailed;
    }
    if (flock(m_nFile, LOCK_EX | LOCK_NB) == 0) {
        return EnResult::kTaken;
    }
    const bool held = errno == EWOULDBLOCK;
    Release();
    return held ? EnResult::kHeldElsewhere : EnResult::kFailed;
}

void CStoreLock::Release() {
    if (m_nFile >= 0) {
        close(m_nFile);
        m_nFile = -1;
    }
}
