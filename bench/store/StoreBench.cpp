// The cost of a save relative to its floor and its peers, measured in one run. Only ratios are compared.
#include <fmt/format.h>
#include <sched.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "BenchTable.h"
#include "StoreSamples.h"
#include "store/SqliteStore.h"

namespace {

constexpr size_t kValueBytes = 20 * 1024;
constexpr int kKeys = 50;

struct Counts {
    int saves;
    int tight;
    int paced;
    int rounds;
};

constexpr Counts kFull{3000, 20'000, 5'000, 5};
constexpr Counts kQuick{50, 200, 50, 1};

std::string KeyOf(int n) {
    return "key" + std::to_string(n % kKeys);
}

/// A new file on the disk of the build tree. Files are deleted when the program ends: deleting them earlier would
/// disturb the next measurement.
QString NewFile(const char* name) {
    static const QTemporaryDir folder(QStringLiteral(ZR_BENCH_FOLDER "/bench-XXXXXX"));
    static int number = 0;
    return folder.filePath(QStringLiteral("%1-%2").arg(QLatin1String(name)).arg(++number));
}

void End(const QString& reason) {
    fmt::print(stderr, "{}\n", reason.toStdString());
    std::exit(1);
}

void SaveThroughFile(const QString& path, const std::string& value) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(value.data(), qint64(value.size())) != qint64(value.size()) ||
        !file.commit()) {
        End(file.errorString());
    }
}

void Save(CSqliteStore& store, const std::string& key, const std::string& value) {
    if (!store.SaveString(std::nullopt, key, value)) {
        End(QStringLiteral("A save was refused"));
    }
}

struct Medians {
    CSamples store;
    CSamples bare;
    CSamples file;
};

// All three in each round, so that disturbances of the machine affect all.
Medians SaveBesideItsPeers(int rounds) {
    Medians samples;
    const QString path = NewFile("value");
    CSqliteStore store(NewFile("store"));
    CBareSqlite bare(NewFile("bare").toStdString(), CBareSqlite::EnCheckpoints::kNever);
    for (int round = 1; round <= rounds; ++round) {
        const std::string key = KeyOf(round);
        const std::string value = FreshValue(kValueBytes, uint64_t(round));
        // The order alternates, since the second one finds the caches warm.
        if (round % 2 == 0) {
            samples.bare.Measure([&] { bare.Save(key, value); });
        }
        samples.store.Measure([&] { Save(store, key, value); });
        if (round % 2 != 0) {
            samples.bare.Measure([&] { bare.Save(key, value); });
        }
        if (round % 10 == 0) {
            samples.file.Measure([&] { SaveThroughFile(path, value); });
        }
    }
    return samples;
}

using Rhythm = void (*)(int count, const std::function<void(int)>& work);

/// About once a millisecond.
void SaveEachMs(int count, const std::function<void(int)>& work) {
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(1);
    for (int n = 1; n <= count; ++n) {
        QEventLoop tick;
        QObject::connect(&timer, &QTimer::timeout, &tick, &QEventLoop::quit);
        tick.exec();
        work(n);
    }
}

void SaveTight(int count, const std::function<void(int)>& work) {
    for (int n = 1; n <= count; ++n) {
        work(n);
    }
}

double StoreTail(Rhythm rhythm, int count) {
    CSamples samples;
    CSqliteStore store(NewFile("store"));
    rhythm(count, [&](int n) {
        const std::string value = FreshValue(kValueBytes, uint64_t(n));
        samples.Measure([&] { Save(store, KeyOf(n), value); });
    });
    return samples.Quantile(0.999);
}

double AutomaticTail(Rhythm rhythm, int count) {
    CSamples samples;
    CBareSqlite bare(NewFile("automatic").toStdString(), CBareSqlite::EnCheckpoints::kAutomatic);
    rhythm(count, [&](int n) {
        const std::string value = FreshValue(kValueBytes, uint64_t(n));
        samples.Measure([&] { bare.Save(KeyOf(n), value); });
    });
    return samples.Quantile(0.999);
}

/// Compares the 99.9th percentiles in separate, alternating rounds: within one round each would wait for the other's
/// disk. Disturbances come in bursts, so the median over the rounds is compared.
bench::Row TailRow(const char* what, Rhythm rhythm, int count, int rounds) {
    CSamples store;
    CSamples automatic;
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) {
            store.Add(StoreTail(rhythm, count));
            automatic.Add(AutomaticTail(rhythm, count));
        } else {
            automatic.Add(AutomaticTail(rhythm, count));
            store.Add(StoreTail(rhythm, count));
        }
    }
    return {what, store.Quantile(0.5), "The same with automatic checkpoints", automatic.Quantile(0.5), 0.15};
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    if (arguments.size() != 1) {
        fmt::print(stderr, "{}: unknown argument {}\n", arguments[0], arguments[1]);
        return 2;
    }
    // Real-time priority, also for the store's thread: a time slice of another program is longer than a measured call.
    // Without the permission such slices are part of the figures.
    const sched_param first{1};
    sched_setscheduler(0, SCHED_RR, &first);
    const Counts& counts = options.quick ? kQuick : kFull;

    const Medians medians = SaveBesideItsPeers(counts.saves);
    const double store = medians.store.Quantile(0.5);
    const std::vector<bench::Row> rows = {
        {"Store: save of 20 KB", store, "Bare SQLite call", medians.bare.Quantile(0.5), 1.2},
        {"Store: save of 20 KB", store, "QSaveFile", medians.file.Quantile(0.5), 0.12},
        TailRow("Store: tight saves, 99.9th percentile", SaveTight, counts.tight, counts.rounds),
        TailRow("Store: saves each ms, 99.9th percentile", SaveEachMs, counts.paced, counts.rounds),
    };
    return bench::PrintRows(rows, options);
}
