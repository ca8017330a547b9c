#pragma once

#include <memory>

#include "core/message_dispatch.h"
#include "ui/ZAction.h"

class ZMenu;

/// The entry of the user menu that opens the member page. It is visible if the server sent all it needs. Main thread.
class CZRPremiumMenuEntryAction : public ZAction {
    Q_OBJECT

public:
    explicit CZRPremiumMenuEntryAction(ZMenu* menu);
    ~CZRPremiumMenuEntryAction() override;

    void RefreshState();
    void OnStateChanged(unsigned int messageId, unsigned long param, std::shared_ptr<core::CMessageBody> body);

private Q_SLOTS:
    void OnEntryClicked();

private:
    bool m_bWasVisible = false;  // at the last refresh
};
