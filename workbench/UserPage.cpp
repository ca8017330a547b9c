#include "workbench/UserPage.h"

#include <dlfcn.h>
#include <fmt/ranges.h>

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QFormLayout>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>

#include "AIChatEntries.h"
#include "EntryScenes.h"
#include "GrowthService.h"
#include "PremiumNumbers.h"
#include "PremiumRights.h"
#include "Theme.h"
#include "VipGallery.h"
#include "core/attr_market.h"
#include "core/environment.h"
#include "core/lang.h"
#include "ui/zr_ui_theme.h"
#include "workbench/FieldNode.h"
#include "workbench/WireDecoder.h"
#include "workbench/diagnosis/Explanation.h"

namespace {

constexpr int kFileHeight = 240;
constexpr int kTopMargin = 10;
constexpr int kScrollBarRoom = 8;

QString TextOf(const std::vector<int>& numbers) {
    return QString::fromStdString(fmt::format(FMT_STRING("{}"), fmt::join(numbers, " ")));
}

// The library that the service comes from. A module has no version of its own.
QString ModuleLibrary() {
    const auto service = GrowthService();
    Dl_info library{};
    if (!service || dladdr(*reinterpret_cast<void* const*>(service.get()), &library) == 0) {
        return "not loaded"_q;
    }
    const QFileInfo file(QString::fromLocal8Bit(library.dli_fname));
    return "%1, built %2"_q.arg(file.fileName(), file.lastModified().toString(Qt::ISODate));
}

QString TextOf(EnEntryState state) {
    static constexpr const char* kTexts[] = {
        "Open", "Open, forced", "Closed, forced", "Closed", "Closed, nobody logged in", "Closed, no module"};
    return QString::fromLatin1(kTexts[int(state)]);
}

}  // namespace

CUserPage::CUserPage(ISessionControl& session, CAIChatEntries& entries, CPremiumRights& rights, const CTracker& tracker,
                     QWidget* parent)
    : QWidget(parent), m_session(session), m_entries(entries), m_rights(rights), m_tracker(tracker) {
    setObjectName("SessionPage"_q);
    auto* controls = NewControls();
    auto* facts = NewFacts();
    m_pFile = widgets::New<QPlainTextEdit>("UserFile"_q, this, "The whole state in the file"_q);
    m_pFile->setReadOnly(true);
    m_pFile->setTabChangesFocus(true);
    m_pFile->setMinimumHeight(kFileHeight);
    m_pFile->hide();
    auto* layout = widgets::Column({controls, facts, m_pFile, nullptr}, this);
    layout->setContentsMargins(0, kTopMargin, kScrollBarRoom, 0);
    layout->setSpacing(10);
    connect(&session, &ISessionControl::UsersChanged, this, &CUserPage::ShowUser);
    connect(&session, &ISessionControl::UserChanged, this, &CUserPage::ShowUser);
    connect(&session, &ISessionControl::LanguageChanged, this, &CUserPage::ShowChoices);
    connect(&session, &ISessionControl::EditionChanged, this, &CUserPage::ShowChoices);
    connect(&entries, &CAIChatEntries::Changed, this, &CUserPage::ShowChoices);
    connect(&rights, &CPremiumRights::Changed, this, &CUserPage::Refresh);
    connect(&tracker, &CTracker::Changed, this, &CUserPage::Refresh);
    ShowUser();
    theme::OnThemeChange(this, [this] { ShowChoices(); });
}

QFormLayout* CUserPage::NewControls() {
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto add = [this, form](const QString& text, const QString& name, const widgets::Choices& choices,
                                  const std::function<void(const QVariant& value)>& chosen) {
        auto* combo = widgets::NewCombo(name, text, choices, this, chosen);
        form->addRow(text, combo);
        return combo;
    };
    m_pUser = widgets::New<QComboBox>("WorkbenchUser"_q, this, "User"_q);
    m_pLogin = widgets::NewButton("WorkbenchLogin"_q, "Log in"_q, this,
                                  [this] { m_session.Login(m_pUser->currentData().toULongLong()); });
    m_pLogout = widgets::NewButton("WorkbenchLogout"_q, "Log out"_q, this, [this] { m_session.Logout(); });
    form->addRow("User"_q, widgets::Row({{m_pUser, 1}, m_pLogin, m_pLogout}));
    m_pLanguage = add("Language"_q, "WorkbenchLanguage"_q,
                      {{core::lang::kLanguageEnglish, "English"_q},
                       {core::lang::kLanguageSimplifiedChinese, "简体中文"_q},
                       {core::lang::kLanguageTraditionalChinese, "繁體中文"_q},
                       {core::lang::kLanguageJapanese, "日本語"_q},
                       {core::lang::kLanguageFrench, "Français"_q}},
                      [this](const QVariant& value) { m_session.SetLanguage(value.toInt()); });
    m_pTheme = add("Theme"_q, "WorkbenchTheme"_q,
                   {{int(zr_ui_theme::Manager::kThemeLight), "Light"_q},
                    {int(zr_ui_theme::Manager::kThemeDarkBlue), "Dark blue"_q},
                    {int(zr_ui_theme::Manager::kThemeBlack), "Black"_q}},
                   [this](const QVariant& value) { m_session.SetTheme(value.toInt()); });
    m_pEdition = add("Edition"_q, "WorkbenchEdition"_q, {{false, "Kestrel"_q}, {true, "Velora"_q}},
                     [this](const QVariant& value) { m_session.SetVelora(value.toBool()); });
    m_pOverride = add("AI chat override"_q, "WorkbenchOverride"_q,
                      {{int(EnEntryOverride::None), "No override"_q},
                       {int(EnEntryOverride::Open), "Force open"_q},
                       {int(EnEntryOverride::Closed), "Force closed"_q}},
                      [this](const QVariant& value) { m_entries.SetOverride(EnEntryOverride(value.toInt())); });
    m_pMarkets = widgets::New<QLineEdit>("WorkbenchMarkets"_q, this, "Markets"_q);
    m_pMarkets->setPlaceholderText("Numbers, the leading one first, as 1 2 5"_q);
    m_pMarkets->setValidator(
        new QRegularExpressionValidator(QRegularExpression("([0-9]{1,9}[\\s,;]+)*[0-9]{0,9}"_q), this));
    connect(m_pMarkets, &QLineEdit::returnPressed, this, &CUserPage::AskMarkets);
    auto* apply = widgets::NewButton("WorkbenchMarketsApply"_q, "Apply"_q, this, [this] { AskMarkets(); });
    apply->setAccessibleName("Apply the markets"_q);
    form->addRow("Markets"_q, widgets::Row({{m_pMarkets, 1}, apply}));
    return form;
}

QFormLayout* CUserPage::NewFacts() {
    auto* title = widgets::NewLabel({}, "section", this, "This user, now"_q);
    auto* gallery = widgets::NewButton("VipGalleryOpen"_q, "VIP gallery"_q, this,
                                       [this] { CVipGallery::Open(window(), m_rights); });
    auto* copy = widgets::NewButton("UserCopy"_q, "Copy"_q, this, [this] { Copy(); });
    copy->setAccessibleName("Copy the user's facts"_q);
    auto* form = new QFormLayout;
    form->addRow(widgets::Row({{title, 1}, gallery, copy}));
    const auto add = [this, form](const QString& key, const QString& text, const std::function<QString()>& read) {
        auto* value = widgets::NewLabel("UserFact_"_q + key, "", this);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(text, value);
        auto* label = static_cast<QLabel*>(form->labelForField(value));
        label->setProperty("role", "muted"_q);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_facts.push_back({key, text, read, value});
    };
    add("user"_q, "User"_q, [this] {
        return m_nCurrent == 0 ? "Nobody is logged in"_q : widgets::UserText(m_session.Users(), m_nCurrent);
    });
    add("edition"_q, "Edition"_q, [this] { return m_pEdition->currentText(); });
    add("language"_q, "Language"_q, [this] { return m_pLanguage->currentText(); });
    add("theme"_q, "Theme"_q, [this] { return m_pTheme->currentText(); });
    add("markets"_q, "Markets"_q, [] { return TextOf(core::attr_market::GetCurrentUserAttrMarket()); });
    add("rights"_q, "Rights held"_q, [this] { return Rights(); });
    add("vipOlderSystem"_q, "VIP, older system"_q, [this] { return OldVip(); });
    add("vipNewerSystem"_q, "VIP, newer system"_q, [this] { return NewVip(); });
    add("lastRefresh"_q, "Last refresh"_q, [this] { return LastRefresh(); });
    add("overrides"_q, "Overrides in force"_q, [this] { return Overrides(); });
    add("clockOffset"_q, "Server's clock"_q, [] {
        const QString offset = readable::ServerOffset();
        return offset.isEmpty() ? "as this computer's"_q : offset;
    });
    for (const EntryPage& page : kEntryPages) {
        add("chatScene%1"_q.arg(int(page.scene)),
            "AI chat, scene %1 %2"_q.arg(int(page.scene)).arg(QString::fromUtf8(page.title)),
            [this, &page] { return TextOf(m_entries.State(page.scene)); });
    }
    add("clientVersion"_q, "Client"_q, [] { return QStringLiteral(ZR_VERSION); });
    add("moduleVersion"_q, "Module"_q, ModuleLibrary);
    add("contractVersion"_q, "Contract"_q, [] { return QStringLiteral(ZR_VERSION); });
    add("qtVersion"_q, "Qt"_q, [] { return QString::fromLatin1(qVersion()); });
    return form;
}

void CUserPage::Refresh() {
    for (const Fact& fact : m_facts) {
        fact.value->setText(m_file.isEmpty() ? fact.read() : m_file[fact.key].toString());
    }
}

void CUserPage::ShowFile(const QJsonObject& state) {
    m_file = state;
    m_pFile->setPlainText(QString::fromUtf8(QJsonDocument(state).toJson()));
    m_pFile->setVisible(!state.isEmpty());
    Refresh();
}

void CUserPage::Copy() const {
    QStringList lines;
    for (const Fact& fact : m_facts) {
        lines << "%1: %2"_q.arg(fact.label, fact.value->text());
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

QJsonObject CUserPage::State() const {
    QJsonObject state;
    for (const Fact& fact : m_facts) {
        state[fact.key] = fact.read();
    }
    return state;
}

QString CUserPage::Rights() const {
    QStringList held;
    for (const CPremiumUIAccessData& record : m_rights.Table()) {
        if (record.bHasPermission) {
            const int right = int(record.enAccess);
            held << "%1 %2"_q.arg(right).arg(wire::EnumName("web_premium_access.PremiumAccess", right));
        }
    }
    const QString count = "%1 of %2 in the table"_q.arg(held.size()).arg(m_rights.Table().size());
    return held.isEmpty() ? count : count + ": "_q + held.join(", "_q);
}

QString CUserPage::OldVip() const {
    const VipStatus& vip = m_rights.Vip();
    return !CPremiumRights::HasModule()
               ? "no: the module is missing"_q
               : (vip.state == 1 ? "yes: grade %1"_q.arg(vip.grade) : "no: state %1, not 1"_q.arg(vip.state)) +
                     (vip.qualification ? "; qualified for VIP"_q : "; not qualified for VIP"_q);
}

QString CUserPage::NewVip() const {
    static const QStringList states{"no member"_q, "member"_q, "expired"_q};
    const VipStatus& vip = m_rights.Vip();
    const QString state = states.value(vip.newState, "state %1"_q.arg(vip.newState));
    if (!CPremiumRights::HasModule()) {
        return "no: the module is missing"_q;
    }
    if (vip.isNewSystem) {
        return vip.newState == 1 ? "yes: member, report value %1"_q.arg(vip.engine) : "no: "_q + state;
    }
    return core::environment::IsVelora() ? "no: the server does not count the user in it"_q
                                         : "no: edition Kestrel; the server reports %1"_q.arg(state);
}

void CUserPage::ShowOverrides(const QStringList& overrides) {
    m_overrides = overrides;
    Refresh();
}

QString CUserPage::Overrides() const {
    QStringList all = m_overrides;
    if (m_entries.Override() != EnEntryOverride::None) {
        all << "AI chat: "_q + m_pOverride->currentText().toLower();
    }
    if (m_bMarkets) {
        all << "markets, until the next login"_q;
    }
    return all.isEmpty() ? "none"_q : all.join("; "_q);
}

// The newest request since the login, with its reason and result. Sessions of requests ascend.
QString CUserPage::LastRefresh() const {
    const auto newest = [](const RefreshState& state) {
        return state.requests.isEmpty() ? RefreshState::Request() : state.requests.last();
    };
    const auto rights = newest(m_tracker.State().rights);
    const auto vip = newest(m_tracker.State().vip);
    const bool isVip = vip.sentMs > rights.sentMs;
    const auto& last = isVip ? vip : rights;
    return last.sentMs == 0 ? "none was seen yet"_q
                            : "%1 %2: %3, %4"_q.arg(readable::LocalTime(last.sentMs), readable::Zone(),
                                                    isVip ? "VIP status"_q : "rights"_q, explanation::OutcomeOf(last));
}

void CUserPage::AskMarkets() {
    static const QRegularExpression separators("[\\s,;]+"_q);
    std::vector<int> markets;
    const QStringList words = m_pMarkets->text().split(separators, Qt::SkipEmptyParts);
    for (const QString& word : words) {
        markets.push_back(word.toInt());
    }
    m_session.OverrideMarkets(markets);
    m_bMarkets = true;
    Refresh();
}

// A login outside the workbench selects that user. A refreshed list keeps the selection.
void CUserPage::ShowUser() {
    const quint64 user = m_session.UserId();
    const QVariant chosen = user != 0 && user != m_nCurrent ? QVariant(user) : m_pUser->currentData();
    m_nCurrent = user;
    widgets::ShowUsers(m_pUser, m_session.Users(), chosen);
    m_pLogin->setEnabled(!m_session.Users().empty());
    m_pLogout->setEnabled(user != 0);
    m_pMarkets->setText(TextOf(core::attr_market::GetCurrentUserAttrMarket()));
    m_bMarkets = false;
    ShowChoices();
}

void CUserPage::ShowChoices() {
    widgets::Select(m_pLanguage, m_session.LanguageId());  // any other number is English
    widgets::Select(m_pEdition, core::environment::IsVelora());
    widgets::Select(m_pTheme, int(zr_ui_theme::Manager::instance()->getTheme()));
    widgets::Select(m_pOverride, int(m_entries.Override()));
    m_pOverride->setEnabled(m_entries.HasModule());
    Refresh();
}
