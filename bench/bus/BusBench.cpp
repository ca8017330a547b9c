// One message to ten subscribers, each bound with a context object. The references are ten virtual calls, which is the
// minimum, and a direct signal, which is the alternative without a bus.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <array>

#include "BenchTable.h"
#include "Floor.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "framework/Ports.h"

namespace {

constexpr int kSubscribers = 10;
constexpr unsigned int kMessage = 80052;
// Messages that a client of some size has subscribers for.
constexpr unsigned int kOtherMessages = 40;

using Body = std::shared_ptr<core::CMessageBody>;

class CSubscriber : public QObject {
public:
    CSubscriber() {
        core::__CMessageDispatch("[Bench]").Bind(
            kMessage, [this](unsigned int messageId, unsigned long wParam, Body body) { On(messageId, wParam, body); },
            this);
    }

    void On(unsigned int messageId, unsigned long wParam, const Body& body) { Note(messageId, wParam, body); }
};

void Send(benchmark::State& state, const Body& body) {
    for (auto _ : state) {
        core::__CMessageDispatch("[Bench]").Send(kMessage, body, true);
    }
}

void CallVirtually(benchmark::State& state, const Body& body) {
    std::array<std::unique_ptr<IListener>, kSubscribers> listeners;
    for (auto& listener : listeners) {
        listener = NewListener();
    }
    for (auto _ : state) {
        for (const auto& listener : listeners) {
            listener->On(kMessage, 0, body);
        }
    }
}

void Emit(benchmark::State& state, const Body& body) {
    CSignaller signaller;
    std::array<CListenerObject, kSubscribers> listeners;
    for (CListenerObject& listener : listeners) {
        QObject::connect(&signaller, &CSignaller::Told, &listener, &CListenerObject::On, Qt::DirectConnection);
    }
    for (auto _ : state) {
        Q_EMIT signaller.Told(kMessage, 0, body);
    }
}

}  // namespace

int main(int argc, char** argv) {
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);

    CMainThreadPoster poster;
    CMessageBus bus(poster);
    host::Ports ports;
    ports.poster = &poster;
    ports.bus = &bus;
    host::Install(ports);
    const std::array<CSubscriber, kSubscribers> subscribers;
    QObject other;
    for (unsigned int i = 1; i <= kOtherMessages; ++i) {
        bus.Bind(
            kMessage + i, [](auto, auto, const auto&) {}, &other);
    }

    for (const bool withBody : {false, true}) {
        const Body body = withBody ? std::make_shared<core::CMessageBody>() : nullptr;
        const std::string suffix = withBody ? ", with a body" : ", without a body";
        benchmark::RegisterBenchmark(("Bus: send to 10" + suffix).c_str(), Send, body);
        benchmark::RegisterBenchmark(("10 virtual calls" + suffix).c_str(), CallVirtually, body);
        benchmark::RegisterBenchmark(("Direct signal to 10" + suffix).c_str(), Emit, body);
    }
    const int result =
        bench::RunComparisons(argc, argv,
                              {
                                  {"Bus: send to 10, without a body", "10 virtual calls, without a body", 1.7},
                                  {"Bus: send to 10, with a body", "10 virtual calls, with a body", 1.2},
                                  {"Bus: send to 10, without a body", "Direct signal to 10, without a body", 1},
                                  {"Bus: send to 10, with a body", "Direct signal to 10, with a body", 1},
                              });
    host::Uninstall();
    return result;
}
