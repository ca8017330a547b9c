#include "AIChatEntryButton.h"

#include "AIChatEntries.h"
#include "GrowthService.h"
#include "Icons.h"
#include "Theme.h"
#include "Translation.h"
#include "ui/KitPaint.h"

namespace {

const char* Reason(EnEntryState state) {
    switch (state) {
        case EnEntryState::Open:
            return QT_TRANSLATE_NOOP("CAIChatEntryButton", "AI chat is open here (scene %1)");
        case EnEntryState::ForcedOpen:
            return QT_TRANSLATE_NOOP("CAIChatEntryButton", "Forced open by the developer override (scene %1)");
        case EnEntryState::ForcedClosed:
            return QT_TRANSLATE_NOOP("CAIChatEntryButton", "Forced closed by the developer override (scene %1)");
        case EnEntryState::ClosedByServer:
            return QT_TRANSLATE_NOOP("CAIChatEntryButton",
                                     "Off: the server has not opened AI chat here to you (scene %1)");
        case EnEntryState::NobodyLoggedIn:
            return QT_TRANSLATE_NOOP("CAIChatEntryButton", "Off: log in to use AI chat (scene %1)");
        case EnEntryState::NoModule:
            break;
    }
    return QT_TRANSLATE_NOOP("CAIChatEntryButton", "Off: the module that serves AI chat is not there (scene %1)");
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
    translation::OnLanguageChange(this, [this] {
        setText(tr("AI chat"));
        // Each page has such a button.
        setAccessibleName(text() + QStringLiteral(", ") + translation::PageText(m_page.title));
        ShowState();
    });
    connect(&entries, &CAIChatEntries::Changed, this, &CAIChatEntryButton::ShowState);
    connect(this, &QPushButton::clicked, this, &CAIChatEntryButton::OnClicked);
}

void CAIChatEntryButton::ShowState() {
    const EnEntryState state = m_entries.State(m_page.scene);
    setEnabled(CAIChatEntries::IsOpen(state));
    setToolTip(host::kit::TipText(tr(Reason(state)).arg(int(m_page.scene))));
}

void CAIChatEntryButton::OnClicked() {
    const auto service = GrowthService();
    if (!service) {
        return;
    }
    service->OpenAIChatPage(m_page.chat, {}, false, true);
    const bool forced = m_entries.State(m_page.scene) == EnEntryState::ForcedOpen;
    const QString words = forced ? tr("AI chat, %1 (scene %2): forced open by the developer override")
                                 : tr("AI chat, %1 (scene %2): opened by the server to this user");
    Q_EMIT Entered(words.arg(translation::PageText(m_page.title)).arg(int(m_page.scene)));
}
