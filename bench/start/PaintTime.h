#pragma once

#include <QCoreApplication>
#include <cinttypes>
#include <cstdio>
#include <ctime>

/// Prints the time (CLOCK_MONOTONIC, nanoseconds) on the standard output and ends the application.
inline void PrintTimeAndQuit() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    printf("%" PRId64 "\n", int64_t(now.tv_sec) * 1000000000 + now.tv_nsec);
    fflush(stdout);
    QCoreApplication::quit();
}
