#include "ProcessEnd.h"

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

// The end takes at most two seconds.
constexpr suseconds_t kEndLimitMicros = 500'000;
constexpr time_t kEndLimitSeconds = 1;

}  // namespace

int CEndSignals::s_pipe[2] = {-1, -1};

CEndSignals::CEndSignals() : m_notifier((pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK), s_pipe[0]), QSocketNotifier::Read) {
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(s_pipe[0], &byte, 1) == 1) {
            Q_EMIT Received();
        }
    });
    struct sigaction action {};
    action.sa_handler = [](int) {
        const char byte = 0;
        [[maybe_unused]] const ssize_t written = write(s_pipe[1], &byte, 1);
    };
    action.sa_flags = SA_RESETHAND | SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
}

// A timer of the system and no thread: it also ends a process whose threads all hang.
void LimitEnd() {
    std::signal(SIGALRM, [](int) {
        constexpr char text[] = "The end of the client took too long\n";
        [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, sizeof(text) - 1);
        _exit(0);
    });
    const itimerval limit{{}, {kEndLimitSeconds, kEndLimitMicros}};
    setitimer(ITIMER_REAL, &limit, nullptr);
}

void EndProcess(int code) {
    std::fflush(nullptr);
    std::_Exit(code);
}
