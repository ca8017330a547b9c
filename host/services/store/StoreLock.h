#pragma once

#include <QString>

/// Which client writes the store of a folder: the one that holds the lock file. The system frees it when
/// the process ends, however it ends; the file itself stays.
class CStoreLock {
public:
    enum class EnResult {
        kTaken,
        kHeldElsewhere,
        kReadOnly,  ///< file or folder don't let us write
        kFailed,
    };

    explicit CStoreLock(const QString& path) : m_path(path) {}
    ~CStoreLock() { Release(); }
    CStoreLock(const CStoreLock&) = delete;
    CStoreLock& operator=(const CStoreLock&) = delete;

    /// Never waits.
    EnResult Take();
    void Release();

private:
    const QString m_path;
    int m_nFile = -1;
};
