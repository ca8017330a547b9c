// The heap that a request for rights keeps: its session stays in a map for as long as the process runs. The reference
// is a node of that map.
#include <fmt/format.h>
#include <malloc.h>

#include <QCoreApplication>
#include <QMap>

#include "BenchTable.h"
#include "Premium/ZRPremiumManager.h"
#include "core/IChannel.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "framework/Ports.h"

namespace {

constexpr int kRequests = 100'000;

/// Gives each request a session, and answers none.
class CSilentChannel : public IChannel {
public:
    unsigned long SendCommand(const CSProtoData&, CSCallback, QObject*) override { return ++m_nSession; }
    void BindCallback(unsigned short, CSCallback, QObject*) override {}
    void UnbindCallback(QObject*) override {}

private:
    unsigned long m_nSession = 0;
};

/// Returns the heap that each call of `add` keeps, in bytes.
template <typename Add>
double KeptBytes(Add add) {
    const auto before = double(mallinfo2().uordblks);
    for (int count = 0; count < kRequests; ++count) {
        add(count);
    }
    return (double(mallinfo2().uordblks) - before) / kRequests;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);
    CMainThreadPoster poster;
    CMessageBus bus(poster);
    CSilentChannel channel;
    host::Ports ports;
    ports.poster = &poster;
    ports.bus = &bus;
    ports.channel = &channel;
    host::Install(ports);
    CZRPremiumManager& manager = *CZRPremiumManager::Singleton();
    manager.Init();
    manager.GetUiMsgAndPremiumAccessReq(false);

    const double kept = KeptBytes([&manager](int) { manager.GetUiMsgAndPremiumAccessReq(false); });
    QMap<unsigned long, bool> map;
    const double node = KeptBytes([&map](int count) { map.insert(static_cast<unsigned long>(count), false); });
    const int result = bench::PrintRows(
        {{"Heap kept for a request for rights", kept, "A node of its map", node, 1.05, bench::EnUnit::kBytes}},
        options);
    host::Uninstall();
    return result;
}
