// The time from an answer with all rights to the table, relative to the parse alone. Reading one right is relative to
// the lock and the copy alone.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QReadLocker>
#include <QReadWriteLock>
#include <QTemporaryDir>

#include "BenchTable.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/Model/ZRPremiumWire.h"
#include "Premium/ZRPremiumManager.h"
#include "RightsSample.h"
#include "core/IClientState.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "framework/Ports.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "premium_svr.pb.h"
#include "store/SqliteStore.h"

namespace {

class COneUser : public IClientState {
public:
    uint64_t UserId() const override { return 12345; }
};

void Parse(benchmark::State& state, const std::string& bytes) {
    for (auto _ : state) {
        web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
        benchmark::DoNotOptimize(answer.ParseFromString(bytes));
    }
}

void IntoTheTable(benchmark::State& state, const std::string& bytes) {
    CZRPremiumManager& manager = *CZRPremiumManager::Singleton();
    for (auto _ : state) {
        web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
        answer.ParseFromString(bytes);
        for (const auto& element : answer.data().ui_data_and_access_data()) {
            if (const auto record = premium_wire::ReadRecord(element)) {
                manager.SetUIAccessData(EnPremiumAccess(element.access()), *record);
            }
        }
    }
}

void Handle(benchmark::State& state, const std::string& bytes) {
    auto& handler = *CZRPremiumManager::Singleton()->findChild<CZRPremiumDataHandler*>();
    CSProtoData data;
    data.m_strData = bytes;
    for (auto _ : state) {
        handler.ParseUiMsgAndPremiumAccessRsp(1, data, true);
    }
}

void ReadOne(benchmark::State& state) {
    const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(service->GetUIAccessData(EnPremiumAccess_TrendProjection));
    }
}

void CopyUnderLock(benchmark::State& state) {
    const CPremiumUIAccessData record =
        CZRPremiumManager::Singleton()->GetUIAccessData(EnPremiumAccess_TrendProjection);
    QReadWriteLock lock;
    for (auto _ : state) {
        const QReadLocker locker(&lock);
        benchmark::DoNotOptimize(CPremiumUIAccessData(record));
    }
}

constexpr const char* kParse = "Parse of an answer with all rights";

}  // namespace

int main(int argc, char** argv) {
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);

    // On the disk of the build tree: a file system in memory would hide the cost of the disk.
    const QTemporaryDir folder(QStringLiteral(ZR_BENCH_FOLDER "/bench-XXXXXX"));
    CMainThreadPoster poster;
    CMessageBus bus(poster);
    CSqliteStore store(folder.filePath(QStringLiteral("store.sqlite")));
    COneUser account;
    host::Ports ports;
    ports.poster = &poster;
    ports.bus = &bus;
    ports.store = &store;
    ports.state = &account;
    host::Install(ports);
    CZRPremiumManager::Singleton()->Init();

    const std::string bytes = AnswerWithAllRights();
    benchmark::RegisterBenchmark(kParse, Parse, bytes);
    benchmark::RegisterBenchmark("Answer with all rights into the table", IntoTheTable, bytes);
    benchmark::RegisterBenchmark("The same with messages and save", Handle, bytes);
    benchmark::RegisterBenchmark("Lock and copy of a record", CopyUnderLock);
    benchmark::RegisterBenchmark("Read of a right through the service", ReadOne);
    const int result =
        bench::RunComparisons(argc, argv,
                              {
                                  {"Answer with all rights into the table", kParse, 1.6},
                                  {"The same with messages and save", kParse, 3.2},
                                  {"Read of a right through the service", "Lock and copy of a record", 1.1},
                              });
    host::Uninstall();
    return result;
}
