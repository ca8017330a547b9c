#pragma once

#include <QString>

/// Decides which client writes the store of a folder: the one that holds the lock file. The system releases the lock
/// when the process ends, in any way. The file itself stays.
class CStoreLock {
public:
    enum class EnResult {
        kTaken,
        kHeldElsewhere,
        kReadOnly,  ///< permissions of the file or its folder
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
