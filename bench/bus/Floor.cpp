#include "Floor.h"

namespace {

class CListener : public IListener {
public:
    void On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) override {
        Note(messageId, wParam, body);
    }
};

}  // namespace

std::unique_ptr<IListener> NewListener() {
    return std::make_unique<CListener>();
}

void CListenerObject::On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
    Note(messageId, wParam, body);
}
