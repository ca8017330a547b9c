// What a save costs beside what it can't be below, and beside its peers, in one run: only ratios are compared.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <cstring>
#include <functional>

#include "StoreSamples.h"
#include "store/SqliteStore.h"

namespace {

constexpr size_t kValueBytes = 20 * 1024;
constexpr int kKeys = 50;

struct Counts {
    int saves = 3000;
    int tight = 20'000;
    int paced = 5'000;
};

constexpr Counts kQuick{50, 200, 50};

std::string KeyOf(int n) {
    return "key" + std::to_string(n % kKeys);
}

/// The files of one benchmark, on the disk of the build tree.
class CBenchFolder {
public:
    QString Path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

private:
    QTemporaryDir m_folder{QStringLiteral(ZR_BENCH_FOLDER "/bench-XXXXXX")};
};

struct Measured {
    CSamples store;
    CSamples bare;
    CSamples file;
    CSamples tight;
    CSamples tightAutomatic;
    CSamples paced;
    CSamples pacedAutomatic;
};

Measured& All() {
    static Measured measured;
    return measured;
}

void SaveThroughFile(const QString& path, const std::string& value) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(value.data(), qint64(value.size())) != qint64(value.size()) ||
        !file.commit()) {
        std::fprintf(stderr, "%s\n", qPrintable(file.errorString()));
        std::exit(1);
    }
}

void Save(CSqliteStore& store, const std::string& key, const std::string& value) {
    if (!store.SaveString(std::nullopt, key, value)) {
        std::fprintf(stderr, "A save was refused\n");
        std::exit(1);
    }
}

// Side by side in each round, so that what disturbs the machine disturbs all three.
void SaveBesideItsPeers(benchmark::State& state) {
    const CBenchFolder folder;
    CSqliteStore store(folder.Path("store.sqlite"));
    CBareSqlite bare(folder.Path("bare.sqlite").toStdString(), CBareSqlite::EnCheckpoints::kNever);
    int round = 0;
    for (auto _ : state) {
        ++round;
        const std::string key = KeyOf(round);
        const std::string value = FreshValue(kValueBytes, uint64_t(round));
        // Each comes first as often as the other: the second finds the caches warm.
        double took = 0;
        if (round % 2 == 0) {
            All().bare.Measure([&] { bare.Save(key, value); });
            took = All().store.Measure([&] { Save(store, key, value); });
        } else {
            took = All().store.Measure([&] { Save(store, key, value); });
            All().bare.Measure([&] { bare.Save(key, value); });
        }
        if (round % 10 == 0) {
            All().file.Measure([&] { SaveThroughFile(folder.Path("value"), value); });
        }
        state.SetIterationTime(took);
    }
}

/// Runs `work` about once a millisecond until the benchmark has enough.
void Pace(benchmark::State& state, const std::function<double(int)>& work) {
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(1);
    int round = 0;
    for (auto _ : state) {
        QEventLoop tick;
        QObject::connect(&timer, &QTimer::timeout, &tick, &QEventLoop::quit);
        tick.exec();
        state.SetIterationTime(work(++round));
    }
}

void Hurry(benchmark::State& state, const std::function<double(int)>& work) {
    int round = 0;
    for (auto _ : state) {
        state.SetIterationTime(work(++round));
    }
}

using Rhythm = void (*)(benchmark::State&, const std::function<double(int)>&);

void WriteThroughTheStore(benchmark::State& state, Rhythm rhythm, CSamples& samples) {
    const CBenchFolder folder;
    CSqliteStore store(folder.Path("store.sqlite"));
    rhythm(state, [&](int round) {
        const std::string value = FreshValue(kValueBytes, uint64_t(round));
        return samples.Measure([&] { Save(store, KeyOf(round), value); });
    });
    state.counters["p99.9_us"] = samples.Quantile(0.999);
}

void WriteWithAutomaticCheckpoints(benchmark::State& state, Rhythm rhythm, CSamples& samples) {
    const CBenchFolder folder;
    CBareSqlite bare(folder.Path("automatic.sqlite").toStdString(), CBareSqlite::EnCheckpoints::kAutomatic);
    rhythm(state, [&](int round) {
        const std::string value = FreshValue(kValueBytes, uint64_t(round));
        return samples.Measure([&] { bare.Save(KeyOf(round), value); });
    });
    state.counters["p99.9_us"] = samples.Quantile(0.999);
}

void Register(const Counts& counts) {
    const auto add = [](const char* name, auto work, int rounds) {
        benchmark::RegisterBenchmark(name, work)->Iterations(rounds)->UseManualTime()->Unit(benchmark::kMicrosecond);
    };
    add("Save20K", SaveBesideItsPeers, counts.saves);
    add(
        "Tight/Store", [](benchmark::State& state) { WriteThroughTheStore(state, Hurry, All().tight); }, counts.tight);
    add(
        "Tight/Automatic",
        [](benchmark::State& state) { WriteWithAutomaticCheckpoints(state, Hurry, All().tightAutomatic); },
        counts.tight);
    add(
        "Paced/Store", [](benchmark::State& state) { WriteThroughTheStore(state, Pace, All().paced); }, counts.paced);
    add(
        "Paced/Automatic",
        [](benchmark::State& state) { WriteWithAutomaticCheckpoints(state, Pace, All().pacedAutomatic); },
        counts.paced);
}

struct Row {
    const char* what;
    double measured;
    const char* peer;
    double peerMeasured;
    double goal;
};

/// Gives whether each goal is met.
bool PrintTable() {
    const Measured& all = All();
    const Row rows[] = {
        {"save 20 KB, median", all.store.Quantile(0.5), "bare SQLite call", all.bare.Quantile(0.5), 1.5},
        {"save 20 KB, median", all.store.Quantile(0.5), "QSaveFile", all.file.Quantile(0.5), 0.25},
        {"tight saves, p99.9", all.tight.Quantile(0.999), "automatic checkpoints", all.tightAutomatic.Quantile(0.999),
         1.0 / 3},
        {"paced saves, p99.9", all.paced.Quantile(0.999), "automatic checkpoints", all.pacedAutomatic.Quantile(0.999),
         1.0 / 3},
    };
    bool met = true;
    std::printf("\n%-20s %10s  %-22s %10s  %7s  %7s\n", "what", "us", "floor or peer", "us", "ratio", "goal");
    for (const Row& row : rows) {
        const double ratio = row.peerMeasured > 0 ? row.measured / row.peerMeasured : 0;
        met = met && ratio <= row.goal;
        std::printf("%-20s %10.1f  %-22s %10.1f  %7.2f  <= %4.2f%s\n", row.what, row.measured, row.peer,
                    row.peerMeasured, ratio, row.goal, ratio <= row.goal ? "" : "  missed");
    }
    return met;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bool quick = argc > 1 && std::strcmp(argv[argc - 1], "--quick") == 0;
    argc -= quick ? 1 : 0;
    Register(quick ? kQuick : Counts{});
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    const bool met = PrintTable();
    // So few rounds say nothing of how fast it is.
    return met || quick ? 0 : 1;
}
