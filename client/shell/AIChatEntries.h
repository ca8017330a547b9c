#pragma once

#include <QObject>
#include <map>

#include "modules/ZRGrowthTypes.h"

class IZRGrowthModuleInterface;

/// Why an entry is open or closed.
enum class EnEntryState {
    Open,
    ForcedOpen,
    ForcedClosed,
    ClosedByServer,
    NobodyLoggedIn,
    NoModule,
};

/// The numbers that the growth module knows the developer override by.
enum class EnEntryOverride : unsigned int {
    None = 0,
    Open = 1,
    Closed = 2,
};

/// What the growth module says of the AI chat entries, asked anew at its bus message. Main thread.
/// The service is asked of the plug-in centre for each call: the module may be missing or replaced.
class CAIChatEntries : public QObject {
    Q_OBJECT

public:
    explicit CAIChatEntries(QObject* parent = nullptr);

    /// As of the last refresh. NoModule for a scene that the client has no page for.
    EnEntryState State(ZRAIChatEntryScene scene) const;
    static bool IsOpen(EnEntryState state);

    bool HasModule() const;

    EnEntryOverride Override() const { return m_override; }
    /// Lasts until the client ends. Without the module nothing is overridden.
    void SetOverride(EnEntryOverride entryOverride);

    /// Asks the module for every scene. Called when a user was logged in or out; the rest comes by itself.
    void Refresh();

Q_SIGNALS:
    void Changed();

private:
    EnEntryState Ask(IZRGrowthModuleInterface* service, ZRAIChatEntryScene scene) const;

    std::map<ZRAIChatEntryScene, EnEntryState> m_states;
    EnEntryOverride m_override = EnEntryOverride::None;
};
