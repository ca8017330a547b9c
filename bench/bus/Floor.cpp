#include "Floor.h"

#include <benchmark/benchmark.h>

namespace {

class CListener : public IListener {
public:
    void On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) override {
        Note(messageId, wParam, body);
    }
};

}  // namespace

void Note(unsigned int messageId, unsigned long wParam, const std::shared_ptr<core::CMessageBody>& body) {
    benchmark::DoNotOptimize(messageId);
    benchmark::DoNotOptimize(wParam);
    benchmark::DoNotOptimize(body.get());
}

std::unique_ptr<IListener> NewListener() {
    return std::make_unique<CListener>();
}

void CListenerObject::On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
    Note(messageId, wParam, body);
}
