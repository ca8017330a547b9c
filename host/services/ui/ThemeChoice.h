#pragma once

class ILocalStore;

/// The theme that somebody chose, kept in the store from one start to the next. Main thread.
class CThemeChoice {
public:
    explicit CThemeChoice(ILocalStore& store) : m_store(store) {}

    /// Puts the host into the theme `wanted`, for this run only; if that is 0, into the one that was kept, if
    /// any. What was kept and is no theme is logged and passed over.
    void Begin(int wanted);

    /// Changes the theme and keeps it. A theme that can't be kept is worn until the end. A number that is no
    /// theme changes nothing.
    void Choose(int number);

private:
    ILocalStore& m_store;
};
