#include "Child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <ctime>

namespace bench {

int64_t MonotonicNanos() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t(now.tv_sec) * 1000000000 + now.tv_nsec;
}

Outcome RunChild(const std::string& name, const std::vector<std::string>& arguments) {
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), OwnFolder() + '/' + name);
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {-1, 0, std::string()};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    Outcome outcome{-1, MonotonicNanos(), std::string()};
    pid_t child = 0;
    const bool started = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    char part[512];
    ssize_t size = 0;
    while (started && (size = read(ends[0], part, sizeof(part))) > 0) {
        outcome.output.append(part, size_t(size));
    }
    close(ends[0]);
    int status = 0;
    if (started && waitpid(child, &status, 0) == child && WIFEXITED(status)) {
        outcome.exitCode = WEXITSTATUS(status);
    }
    return outcome;
}

std::string OwnFolder() {
    char path[PATH_MAX];
    const ssize_t size = readlink("/proc/self/exe", path, sizeof(path));
    const std::string own(path, size_t(size > 0 ? size : 0));
    return own.substr(0, own.rfind('/'));
}

}  // namespace bench
