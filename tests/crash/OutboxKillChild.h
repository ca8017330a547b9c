#pragma once

#include <QString>
#include <cstdint>

/// The client process: it reports from two threads, uploads at the same time, and is killed at a random time.
namespace outbox_kill {

/// Reports events with ascending numbers from `firstNumber` and writes each accepted number to `pipe`.
/// Returns only if a report or the pipe fails.
int RunChild(const QString& path, quint16 sinkPort, uint64_t firstNumber, int pipe);

/// Uploads the remaining events and returns when the outbox is empty.
int Drain(const QString& path, quint16 sinkPort);

}  // namespace outbox_kill
