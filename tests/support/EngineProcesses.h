#pragma once

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <map>
#include <set>

/// Whether this process has mapped a file whose path holds `library`.
inline bool IsMapped(const QString& library) {
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library.toLatin1());
}

/// The processes of the engine's pages below this one. The engine's first processes fork them.
inline std::set<pid_t> PageProcesses() {
    std::map<pid_t, pid_t> parents;  // of all processes of the engine
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(name));
        QFile line(QStringLiteral("/proc/%1/cmdline").arg(name));
        if (name.toInt() > 0 && stat.open(QIODevice::ReadOnly) && line.open(QIODevice::ReadOnly) &&
            line.readAll().contains("QtWebEngineProcess")) {
            const QByteArray text = stat.readAll();
            parents[name.toInt()] = text.mid(text.lastIndexOf(')') + 2).split(' ').value(1).toInt();
        }
    }
    std::set<pid_t> found;
    for (const auto& [process, parent] : parents) {
        const auto first = parents.find(parent);
        if (first != parents.end() && first->second == getpid()) {
            found.insert(process);
        }
    }
    return found;
}
