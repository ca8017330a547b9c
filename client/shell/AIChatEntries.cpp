#include "AIChatEntries.h"

#include "EntryScenes.h"
#include "GrowthService.h"
#include "core/login_status_data.h"
#include "core/message_dispatch.h"
#include "modules/ZRGrowthMessages.h"

CAIChatEntries::CAIChatEntries(QObject* parent) : QObject(parent) {
    core::__CMessageDispatch("[Client]")
        .Bind(
            kMsgAIChatEnableChanged,
            [this](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { Refresh(); }, this);
    Refresh();
}

EnEntryState CAIChatEntries::State(ZRAIChatEntryScene scene) const {
    const auto found = m_states.find(scene);
    return found == m_states.end() ? EnEntryState::NoModule : found->second;
}

bool CAIChatEntries::IsOpen(EnEntryState state) {
    return state == EnEntryState::Open || state == EnEntryState::ForcedOpen;
}

bool CAIChatEntries::HasModule() const {
    return GrowthService() != nullptr;
}

void CAIChatEntries::SetOverride(EnEntryOverride entryOverride) {
    const auto service = GrowthService();
    if (!service) {
        Refresh();
        return;
    }
    m_override = entryOverride;
    service->SetAIChatDevelopEnableType(static_cast<unsigned int>(entryOverride));
}

void CAIChatEntries::Refresh() {
    const auto service = GrowthService();
    for (const EntryPage& page : kEntryPages) {
        m_states[page.scene] = Ask(service.get(), page.scene);
    }
    Q_EMIT Changed();
}

// The module answers for the last user after a logout, so the client checks the login itself.
EnEntryState CAIChatEntries::Ask(IZRGrowthModuleInterface* service, ZRAIChatEntryScene scene) const {
    if (!service) {
        return EnEntryState::NoModule;
    }
    const bool open = service->IsAIChatEnable(scene);
    if (m_override != EnEntryOverride::None) {
        return open ? EnEntryState::ForcedOpen : EnEntryState::ForcedClosed;
    }
    if (core::login_status_data::Login_GetUserID() == 0) {
        return EnEntryState::NobodyLoggedIn;
    }
    return open ? EnEntryState::Open : EnEntryState::ClosedByServer;
}
