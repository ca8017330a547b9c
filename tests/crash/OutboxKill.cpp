// Kills a client repeatedly during reports and uploads, and checks that the server counted each accepted event once.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <string>

#include "OutboxKillChild.h"
#include "framework/JsonText.h"
#include "support/RawHttpServer.h"

namespace {

// Number of kills before a file's events are drained and the next file is created.
constexpr int kRoundsPerFile = 100;
constexpr int kMaxLifeMs = 60;
constexpr int kFirstReportTimeoutMs = 20'000;
constexpr int kDrainTimeoutMs = 120'000;

struct Figures {
    int rounds = 0;
    int before = 0;    // killed before the first accepted report
    int inUpload = 0;  // killed during an exchange
    uint64_t taken = 0;
    uint64_t lost = 0;
    uint64_t doubled = 0;
    uint64_t resent = 0;       // received again under a counted id
    uint64_t unconfirmed = 0;  // counted, but the child was killed before it confirmed them
};

/// The server. It counts an id once, and at random refuses, hangs up or does not answer.
class CSink {
public:
    explicit CSink(std::mt19937& random, Figures& figures) : m_random(random), m_figures(figures) {
        m_server.SetHandler([this](const RawHttpRequest& request) { Take(request); });
    }

    bool Listen() { return m_server.Listen(); }
    /// Lets the last client finish without waiting for missing answers.
    void AnswerAll(bool all) { m_bAnswerAll = all; }

    quint16 Port() const { return m_server.Port(); }
    int ConnectionCount() const { return m_server.ConnectionCount(); }

    /// The count of each number since the last call.
    std::map<uint64_t, int> TakeCounts() {
        m_ids.clear();
        return std::exchange(m_counts, {});
    }

private:
    void Take(const RawHttpRequest& request) {
        const uint32_t behaviour = m_random() % 16;
        if (behaviour == 0) {
            m_server.Answer(request.connection, 503, "not now");
            return;
        }
        std::string error;
        const auto batch = host::ParseJson(request.body, error);
        if (!batch) {
            std::fprintf(stderr, "An unreadable batch: %s\n", error.c_str());
            std::exit(1);
        }
        Json::Value answer;
        answer["accepted"] = Json::arrayValue;
        for (const Json::Value& event : (*batch)["events"]) {
            Count(event);
            answer["accepted"].append(event["id"]);
        }
        if (behaviour == 1) {
            m_server.HangUp(request.connection);  // counted, but not confirmed
        } else if (behaviour != 2 || m_bAnswerAll) {
            m_server.Answer(request.connection, 200, QByteArray::fromStdString(answer.toStyledString()));
        }
    }

    void Count(const Json::Value& event) {
        if (m_ids.insert(event["id"].asString()).second) {
            ++m_counts[event["params"]["number"].asUInt64()];
        } else {
            ++m_figures.resent;
        }
    }

    std::mt19937& m_random;
    Figures& m_figures;
    bool m_bAnswerAll = false;
    CRawHttpServer m_server;
    std::set<std::string> m_ids;
    std::map<uint64_t, int> m_counts;
};

pid_t StartChild(const char* what, const QString& path, quint16 port, uint64_t firstNumber, int pipeEnd) {
    const QByteArray arguments[] = {QByteArray("crash_outbox_kill"),
                                    QByteArray(what),
                                    path.toUtf8(),
                                    QByteArray::number(port),
                                    QByteArray::number(qulonglong(firstNumber)),
                                    QByteArray::number(pipeEnd)};
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", arguments[0].constData(), arguments[1].constData(), arguments[2].constData(),
              arguments[3].constData(), arguments[4].constData(), arguments[5].constData(), nullptr);
        _exit(127);
    }
    return child;
}

void RunLoop(int millis, const std::function<bool()>& done) {
    QEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || clock.elapsed() >= millis) {
            loop.quit();
        }
    });
    poll.start(1);
    loop.exec();
}

class CKillRounds {
public:
    explicit CKillRounds(uint32_t seed) : m_random(seed), m_sink(m_random, m_figures) {}

    int Run(int rounds) {
        bool good = rounds > 0 && m_sink.Listen();
        while (good && m_figures.rounds < rounds) {
            const QTemporaryDir folder;
            m_path = folder.filePath(QStringLiteral("reports.sqlite"));
            m_taken.clear();
            for (int round = 0; good && round < kRoundsPerFile && m_figures.rounds < rounds; ++round) {
                good = Round();
            }
            good = good && DrainAndCount();
            if (!QDir(folder.path()).entryList({QStringLiteral("*.corrupt-*")}, QDir::Files).isEmpty()) {
                std::fprintf(stderr, "A file was found corrupt\n");
                good = false;
            }
        }
        std::printf(
            "kills %d (%d before the first report, %d in an upload), taken %llu, lost %llu, doubled %llu, resent "
            "%llu, counted and not confirmed %llu\n",
            m_figures.rounds, m_figures.before, m_figures.inUpload, Wide(m_figures.taken), Wide(m_figures.lost),
            Wide(m_figures.doubled), Wide(m_figures.resent), Wide(m_figures.unconfirmed));
        return good && m_figures.taken > 0 && m_figures.lost == 0 && m_figures.doubled == 0 ? 0 : 1;
    }

private:
    static unsigned long long Wide(uint64_t number) { return number; }

    /// Reads the child's confirmations; false at the end of the pipe.
    bool Listen(int pipeEnd) {
        uint64_t numbers[512];
        for (;;) {
            const ssize_t bytes = read(pipeEnd, numbers, sizeof(numbers));
            if (bytes <= 0) {
                return bytes < 0 && errno == EAGAIN;
            }
            // Writes of this size are atomic.
            for (size_t i = 0; i < size_t(bytes) / sizeof(numbers[0]); ++i) {
                m_taken.insert(numbers[i]);
                ++m_figures.taken;
            }
        }
    }

    bool Round() {
        int ends[2];
        if (pipe2(ends, O_NONBLOCK) != 0 || fcntl(ends[0], F_SETFD, FD_CLOEXEC) != 0 ||
            fcntl(ends[1], F_SETFL, 0) != 0) {
            std::perror("pipe");
            return false;
        }
        const pid_t child = StartChild("--child", m_path, m_sink.Port(), m_nNext, ends[1]);
        close(ends[1]);
        // Beyond any number that this child reaches.
        m_nNext += 1'000'000;
        const uint64_t before = m_figures.taken;
        bool alive = true;
        const auto listen = [&] { return !(alive = Listen(ends[0])); };
        // One in eight is killed while it starts, the others after their first report.
        const bool early = m_random() % 8 == 0;
        if (!early) {
            RunLoop(kFirstReportTimeoutMs, [&] { return listen() || m_figures.taken != before; });
        }
        RunLoop(int(m_random() % kMaxLifeMs) + 1, listen);
        m_figures.inUpload += m_sink.ConnectionCount() > 0 ? 1 : 0;
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        Listen(ends[0]);
        close(ends[0]);
        ++m_figures.rounds;
        m_figures.before += m_figures.taken == before ? 1 : 0;
        if (!alive || !WIFSIGNALED(status) || (!early && m_figures.taken == before)) {
            std::fprintf(stderr, "Round %d: the child ended by itself\n", m_figures.rounds);
            return false;
        }
        return true;
    }

    bool DrainAndCount() {
        m_sink.AnswerAll(true);
        const pid_t child = StartChild("--drain", m_path, m_sink.Port(), 0, 0);
        int status = -1;
        pid_t ended = 0;
        RunLoop(kDrainTimeoutMs, [&] { return (ended = waitpid(child, &status, WNOHANG)) != 0; });
        if (ended != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            std::fprintf(stderr, "The last client could not deliver the remaining events\n");
            kill(child, SIGKILL);
            return false;
        }
        m_sink.AnswerAll(false);
        const auto counts = m_sink.TakeCounts();
        for (const uint64_t number : m_taken) {
            m_figures.lost += counts.count(number) == 0 ? 1 : 0;
        }
        for (const auto& [number, count] : counts) {
            m_figures.doubled += count > 1 ? 1 : 0;
            m_figures.unconfirmed += m_taken.count(number) == 0 ? 1 : 0;
        }
        return true;
    }

    std::mt19937 m_random;
    Figures m_figures;
    CSink m_sink;
    QString m_path;
    uint64_t m_nNext = 1;
    std::set<uint64_t> m_taken;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 6) {
        const QString path = QString::fromUtf8(argv[2]);
        const auto port = quint16(std::atoi(argv[3]));
        return std::string(argv[1]) == "--drain"
                   ? outbox_kill::Drain(path, port)
                   : outbox_kill::RunChild(path, port, std::strtoull(argv[4], nullptr, 10), std::atoi(argv[5]));
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: crash_outbox_kill <number of kills>\n");
        return 2;
    }
    const auto seed = std::random_device()();
    std::printf("seed %u\n", seed);
    return CKillRounds(seed).Run(std::atoi(argv[1]));
}
