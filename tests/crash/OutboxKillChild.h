#pragma once

#include <QString>
#include <cstdint>

/// The client process: it reports from two threads, uploads at the same time, and is killed in between.
namespace outbox_kill {

/// Reports events that are numbered from `firstNumber` on, and writes each number that was taken to `pipe`.
/// Comes back only when a report or the pipe fails.
int RunChild(const QString& path, quint16 sinkPort, uint64_t firstNumber, int pipe);

/// Uploads what is left and comes back when nothing is.
int Drain(const QString& path, quint16 sinkPort);

}  // namespace outbox_kill
