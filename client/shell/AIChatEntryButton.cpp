#include "AIChatEntryButton.h"

#include "AIChatEntries.h"
#include "Icons.h"
#include "Theme.h"

namespace {

texts::EnText Reason(EnEntryState state) {
    switch (state) {
        case EnEntryState::Open:
            return texts::kEntryOpen;
        case EnEntryState::ForcedOpen:
            return texts::kEntryForcedOpen;
        case EnEntryState::ForcedClosed:
            return texts::kEntryForcedClosed;
        case EnEntryState::ClosedByServer:
            return texts::kEntryClosedByServer;
        case EnEntryState::NobodyLoggedIn:
            return texts::kEntryNobodyLoggedIn;
        case EnEntryState::NoModule:
            break;
    }
    return texts::kEntryNoModule;
}

}  // namespace

CAIChatEntryButton::CAIChatEntryButton(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent)
    : QPushButton(parent), m_page(page), m_entries(entries) {
    setObjectName(QStringLiteral("AIChatEntry%1").arg(int(page.scene)));
    setProperty("accent", true);
    setCursor(Qt::PointingHandCursor);
    theme::OnThemeChange(this, [this] {
        setIcon(icons::Make("chat", {theme::kOnAccent, theme::kOnAccent, theme::kFaint}));
    });
    texts::Keep(this, texts::kAIChat);
    texts::Keep(this, [this] { ShowState(); });
    connect(&entries, &CAIChatEntries::Changed, this, &CAIChatEntryButton::ShowState);
    connect(this, &QPushButton::clicked, this, &CAIChatEntryButton::OnClicked);
}

void CAIChatEntryButton::ShowState() {
    const EnEntryState state = m_entries.State(m_page.scene);
    setEnabled(CAIChatEntries::IsOpen(state));
    setToolTip(texts::Tr(Reason(state)).arg(int(m_page.scene)));
}

void CAIChatEntryButton::OnClicked() {
    const bool forced = m_entries.State(m_page.scene) == EnEntryState::ForcedOpen;
    const QString words = texts::Tr(forced ? texts::kEntryClickedForced : texts::kEntryClicked);
    Q_EMIT Entered(words.arg(texts::Tr(m_page.title)).arg(int(m_page.scene)));
}
