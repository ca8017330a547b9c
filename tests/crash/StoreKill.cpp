// Kills a client repeatedly during saves and checks that each acknowledged value is stored.
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>
#include <string>

#include "StoreKillChild.h"
#include "store/SqliteStore.h"

namespace {

using namespace store_kill;

// Number of kills before the next file is created.
constexpr int kRoundsPerFile = 100;
constexpr int kMaxLifeMs = 60;
constexpr int kFirstSaveTimeoutMs = 20'000;

struct Figures {
    int rounds = 0;
    int before = 0;  // killed before the first save
    uint64_t acknowledged = 0;
    uint64_t unacknowledged = 0;  // saved, but killed before the acknowledgement
    uint64_t torn = 0;
    uint64_t lost = 0;
};

struct Acknowledged {
    std::array<uint64_t, kKeys> lastOf{};  // by key; 0 is none
    std::set<uint64_t> inProgress;         // ids that a killed child may have saved without acknowledging them
    uint64_t next = 1;
};

pid_t StartChild(const QString& path, uint64_t firstId, int pipeEnd) {
    const QByteArray arguments[] = {QByteArray("crash_store_kill"), QByteArray("--child"), path.toUtf8(),
                                    QByteArray::number(qulonglong(firstId)), QByteArray::number(pipeEnd)};
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", arguments[0].constData(), arguments[1].constData(), arguments[2].constData(),
              arguments[3].constData(), arguments[4].constData(), nullptr);
        _exit(127);
    }
    return child;
}

/// Reads the child's acknowledgements for `lifeMs`; false at the end of the pipe.
bool Listen(int pipeEnd, qint64 lifeMs, bool untilTheFirst, Acknowledged& acknowledged, Figures& figures) {
    QElapsedTimer life;
    life.start();
    for (;;) {
        pollfd wait{pipeEnd, POLLIN, 0};
        const qint64 left = lifeMs - life.elapsed();
        if (left <= 0 || poll(&wait, 1, int(left)) == 0) {
            return true;
        }
        uint64_t id = 0;
        if (read(pipeEnd, &id, sizeof(id)) != sizeof(id)) {
            return false;
        }
        acknowledged.lastOf[id % kKeys] = id;
        acknowledged.next = id + 1;
        ++figures.acknowledged;
        if (untilTheFirst) {
            return true;
        }
    }
}

void Verify(const QString& path, const Acknowledged& acknowledged, Figures& figures) {
    CSqliteStore store(path);
    for (int key = 0; key < kKeys; ++key) {
        const uint64_t expected = acknowledged.lastOf[size_t(key)];
        std::string value;
        if (!store.ReadString(std::nullopt, KeyOf(uint64_t(key)), value)) {
            figures.lost += expected != 0 ? 1 : 0;
            continue;
        }
        const uint64_t id = IdOf(value);
        if (id == 0 || value != ValueOf(id)) {
            ++figures.torn;
        } else if (id != expected) {
            const bool newer = id > expected && acknowledged.inProgress.count(id) == 1;
            ++(newer ? figures.unacknowledged : figures.lost);
        }
    }
}

bool Round(const QString& path, std::mt19937& random, Acknowledged& acknowledged, Figures& figures) {
    int ends[2];
    if (pipe(ends) != 0 || fcntl(ends[0], F_SETFD, FD_CLOEXEC) != 0) {
        std::perror("pipe");
        return false;
    }
    const pid_t child = StartChild(path, acknowledged.next, ends[1]);
    close(ends[1]);
    const uint64_t before = figures.acknowledged;
    bool alive = true;
    // One in eight is killed while it starts, the others after their first save.
    const bool early = random() % 8 == 0;
    if (!early) {
        alive = Listen(ends[0], kFirstSaveTimeoutMs, true, acknowledged, figures);
    }
    alive = alive && Listen(ends[0], qint64(random() % kMaxLifeMs) + 1, false, acknowledged, figures);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    // Acknowledgements that are still in the pipe.
    Listen(ends[0], kFirstSaveTimeoutMs, false, acknowledged, figures);
    close(ends[0]);
    acknowledged.inProgress.insert(acknowledged.next++);
    ++figures.rounds;
    figures.before += figures.acknowledged == before ? 1 : 0;
    if (!alive || !WIFSIGNALED(status) || (!early && figures.acknowledged == before)) {
        std::fprintf(stderr, "Round %d: the child ended by itself\n", figures.rounds);
        return false;
    }
    return true;
}

int KillMany(int rounds) {
    const auto seed = std::random_device()();
    std::printf("seed %u\n", seed);
    std::mt19937 random(seed);
    Figures figures;
    bool good = rounds > 0;
    while (good && figures.rounds < rounds) {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("client.sqlite"));
        Acknowledged acknowledged;
        for (int round = 0; good && round < kRoundsPerFile && figures.rounds < rounds; ++round) {
            good = Round(path, random, acknowledged, figures);
            Verify(path, acknowledged, figures);
        }
        if (!QDir(folder.path()).entryList({QStringLiteral("*.corrupt-*")}, QDir::Files).isEmpty()) {
            std::fprintf(stderr, "A file was found corrupt\n");
            good = false;
        }
    }
    std::printf(
        "kills %d (%d before the first save), acknowledged %llu, saved and not acknowledged %llu, torn %llu, "
        "lost %llu\n",
        figures.rounds, figures.before, static_cast<unsigned long long>(figures.acknowledged),
        static_cast<unsigned long long>(figures.unacknowledged), static_cast<unsigned long long>(figures.torn),
        static_cast<unsigned long long>(figures.lost));
    return good && figures.acknowledged > 0 && figures.torn == 0 && figures.lost == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 5 && std::string(argv[1]) == "--child") {
        return RunChild(QString::fromUtf8(argv[2]), std::strtoull(argv[3], nullptr, 10), std::atoi(argv[4]));
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: crash_store_kill <number of kills>\n");
        return 2;
    }
    return KillMany(std::atoi(argv[1]));
}
