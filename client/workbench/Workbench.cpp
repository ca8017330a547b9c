#include "workbench/Workbench.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QVariant>

#include "AIChatEntries.h"
#include "ClientTexts.h"
#include "Theme.h"
#include "core/lang.h"
#include "ui/zr_ui_theme.h"
#include "workbench/EntryTable.h"

namespace {

struct LanguageChoice {
    int id;
    texts::EnText name;
};

constexpr LanguageChoice kLanguages[] = {
    {core::lang::kLanguageEnglish, texts::kLanguageEnglish},
    {core::lang::kLanguageSimplifiedChinese, texts::kLanguageSimplifiedChinese},
    {core::lang::kLanguageTraditionalChinese, texts::kLanguageTraditionalChinese},
    {core::lang::kLanguageJapanese, texts::kLanguageJapanese},
    {core::lang::kLanguageFrench, texts::kLanguageFrench},
};

struct ThemeChoice {
    zr_ui_theme::Manager::Theme theme;
    texts::EnText name;
};

constexpr ThemeChoice kThemes[] = {
    {zr_ui_theme::Manager::kThemeLight, texts::kThemeLight},
    {zr_ui_theme::Manager::kThemeDarkBlue, texts::kThemeDarkBlue},
    {zr_ui_theme::Manager::kThemeBlack, texts::kThemeBlack},
};

struct OverrideChoice {
    EnEntryOverride value;
    texts::EnText name;
};

constexpr OverrideChoice kOverrides[] = {
    {EnEntryOverride::None, texts::kOverrideNone},
    {EnEntryOverride::Open, texts::kOverrideOpen},
    {EnEntryOverride::Closed, texts::kOverrideClosed},
};

QComboBox* NewCombo(const char* name, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return combo;
}

QLabel* NewTitle(texts::EnText text, const char* role, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setProperty("role", QString::fromLatin1(role));
    texts::Keep(label, text);
    return label;
}

}  // namespace

CWorkbench::CWorkbench(CAIChatEntries& entries, QWidget* parent)
    : QDockWidget(parent),
      m_entries(entries),
      m_pUser(NewCombo("WorkbenchUser", this)),
      m_pWho(new QLabel(this)),
      m_pLogin(new QPushButton(this)),
      m_pLogout(new QPushButton(this)),
      m_pLanguage(NewCombo("WorkbenchLanguage", this)),
      m_pTheme(NewCombo("WorkbenchTheme", this)),
      m_pOverride(NewCombo("WorkbenchOverride", this)),
      m_pLog(new CLogView(this)) {
    setObjectName(QStringLiteral("Workbench"));
    setFeatures(DockWidgetMovable);
    texts::Keep(this, [this] { setWindowTitle(texts::Tr(texts::kWorkbench)); });
    auto* content = new QWidget(this);
    content->setObjectName(QStringLiteral("WorkbenchContent"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    AddUserRow(grid);
    AddLanguageRow(grid);
    AddThemeRow(grid);
    AddOverrideRow(grid);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(10);
    layout->addLayout(grid);
    layout->addWidget(NewTitle(texts::kEntriesPerScene, "section", content));
    layout->addWidget(new CEntryTable(entries, content));
    layout->addWidget(m_pLog, 1);
    setWidget(content);
    setMinimumWidth(400);
    connect(&entries, &CAIChatEntries::Changed, this, &CWorkbench::ShowOverride);
    texts::Keep(this, [this] {
        ShowUserTexts();
        ShowTheme();
        ShowOverride();
    });
    theme::Keep(this, [this] { ShowTheme(); });
}

void CWorkbench::AddUserRow(QGridLayout* grid) {
    m_pWho->setObjectName(QStringLiteral("WorkbenchWho"));
    m_pWho->setTextFormat(Qt::PlainText);
    m_pWho->setProperty("role", QStringLiteral("muted"));
    m_pLogin->setObjectName(QStringLiteral("WorkbenchLogin"));
    m_pLogout->setObjectName(QStringLiteral("WorkbenchLogout"));
    texts::Keep(m_pLogin, texts::kLogIn);
    texts::Keep(m_pLogout, texts::kLogOut);
    grid->addWidget(NewTitle(texts::kUser, "muted", this), 0, 0);
    grid->addWidget(m_pUser, 0, 1);
    grid->addWidget(m_pLogin, 0, 2);
    grid->addWidget(m_pLogout, 0, 3);
    grid->addWidget(m_pWho, 1, 1, 1, 3);
    grid->setColumnStretch(1, 1);
    connect(m_pLogin, &QPushButton::clicked, this,
            [this] { Q_EMIT LoginWanted(m_pUser->currentData().toULongLong()); });
    connect(m_pLogout, &QPushButton::clicked, this, &CWorkbench::LogoutWanted);
}

void CWorkbench::AddLanguageRow(QGridLayout* grid) {
    for (const LanguageChoice& language : kLanguages) {
        m_pLanguage->addItem(texts::Tr(language.name), language.id);
    }
    grid->addWidget(NewTitle(texts::kLanguage, "muted", this), 2, 0);
    grid->addWidget(m_pLanguage, 2, 1, 1, 3);
    connect(m_pLanguage, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT LanguageWanted(m_pLanguage->currentData().toInt()); });
}

void CWorkbench::AddThemeRow(QGridLayout* grid) {
    for (const ThemeChoice& choice : kThemes) {
        m_pTheme->addItem(QString(), int(choice.theme));
    }
    grid->addWidget(NewTitle(texts::kTheme, "muted", this), 3, 0);
    grid->addWidget(m_pTheme, 3, 1, 1, 3);
    connect(m_pTheme, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT ThemeWanted(m_pTheme->currentData().toInt()); });
}

void CWorkbench::AddOverrideRow(QGridLayout* grid) {
    for (const OverrideChoice& choice : kOverrides) {
        m_pOverride->addItem(QString(), int(choice.value));
    }
    grid->addWidget(NewTitle(texts::kOverride, "muted", this), 4, 0);
    grid->addWidget(m_pOverride, 4, 1, 1, 3);
    connect(m_pOverride, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { m_entries.SetOverride(EnEntryOverride(m_pOverride->currentData().toInt())); });
}

void CWorkbench::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    m_users = users;
    // A login from elsewhere moves the choice to that user; a list that came anew leaves it.
    const QVariant chosen = current != 0 && current != m_nCurrent ? QVariant(current) : m_pUser->currentData();
    m_nCurrent = current;
    m_pUser->clear();
    for (const ServerUser& user : users) {
        m_pUser->addItem(QStringLiteral("%1  %2").arg(user.name).arg(user.id), user.id);
    }
    m_pUser->setCurrentIndex(std::max(0, m_pUser->findData(chosen)));
    ShowUserTexts();
}

void CWorkbench::ShowUserTexts() {
    m_pLogin->setEnabled(!m_users.empty());
    m_pLogout->setEnabled(m_nCurrent != 0);
    if (m_nCurrent == 0) {
        m_pWho->setText(texts::Tr(texts::kNobodyLoggedIn));
        return;
    }
    QString name = QString::number(m_nCurrent);
    for (const ServerUser& user : m_users) {
        if (user.id == m_nCurrent) {
            name = user.name;
        }
    }
    m_pWho->setText(texts::Tr(texts::kLoggedInAs).arg(name, QString::number(m_nCurrent)));
}

void CWorkbench::ShowLanguage(int languageId) {
    const QSignalBlocker blocker(m_pLanguage);
    m_pLanguage->setCurrentIndex(
        std::max(0, m_pLanguage->findData(languageId)));  // any number that is none of these is English
}

void CWorkbench::ShowTheme() {
    const QSignalBlocker blocker(m_pTheme);
    for (int index = 0; index < m_pTheme->count(); ++index) {
        m_pTheme->setItemText(index, texts::Tr(kThemes[index].name));
    }
    m_pTheme->setCurrentIndex(m_pTheme->findData(int(zr_ui_theme::Manager::instance()->getTheme())));
}

void CWorkbench::ShowOverride() {
    const QSignalBlocker blocker(m_pOverride);
    for (int index = 0; index < m_pOverride->count(); ++index) {
        m_pOverride->setItemText(index, texts::Tr(kOverrides[index].name));
    }
    m_pOverride->setCurrentIndex(m_pOverride->findData(int(m_entries.Override())));
    m_pOverride->setEnabled(m_entries.HasModule());
}
