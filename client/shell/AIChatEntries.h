#pragma once

#include <QObject>
#include <map>

#include "modules/ZRGrowthTypes.h"

class IZRGrowthModuleInterface;

/// The state of an entry with its reason.
enum class EnEntryState {
    Open,
    ForcedOpen,
    ForcedClosed,
    ClosedByServer,
    NobodyLoggedIn,
    NoModule,
};

/// The developer override. The numbers are those of the growth module.
enum class EnEntryOverride : unsigned int {
    None = 0,
    Open = 1,
    Closed = 2,
};

/// The states of the AI chat entries, read from the growth module and refreshed at its bus message. The service is
/// looked up for each call, because the module can be missing or replaced. Main thread.
class CAIChatEntries : public QObject {
    Q_OBJECT

public:
    explicit CAIChatEntries(QObject* parent = nullptr);

    /// The state at the last refresh. NoModule for a scene without a page.
    EnEntryState State(ZRAIChatEntryScene scene) const;
    static bool IsOpen(EnEntryState state);

    bool HasModule() const;

    EnEntryOverride Override() const { return m_override; }
    /// The override lasts until the client ends. Without the module the call does nothing.
    void SetOverride(EnEntryOverride entryOverride);

    /// Reads all scenes from the module. Must be called after a login or logout; other changes are noticed.
    void Refresh();

Q_SIGNALS:
    void Changed();

private:
    EnEntryState Ask(IZRGrowthModuleInterface* service, ZRAIChatEntryScene scene) const;

    std::map<ZRAIChatEntryScene, EnEntryState> m_states;
    EnEntryOverride m_override = EnEntryOverride::None;
};
