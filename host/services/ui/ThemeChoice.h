#pragma once

class ILocalStore;

/// The chosen theme, saved in the store for the next start. Main thread.
class CThemeChoice {
public:
    explicit CThemeChoice(ILocalStore& store) : m_store(store) {}

    /// Sets the theme `wanted` for this run. With 0 the saved theme is used. An invalid saved number is logged and
    /// ignored.
    void Begin(int wanted);

    /// Sets and saves the theme. If the save fails, the theme is used until the end. An invalid number changes
    /// nothing.
    void Choose(int number);

private:
    ILocalStore& m_store;
};
