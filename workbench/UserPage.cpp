#include "workbench/UserPage.h"

#include <dlfcn.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QVariant>

#include "AIChatEntries.h"
#include "GrowthService.h"
#include "PremiumRights.h"
#include "Theme.h"
#include "VipGallery.h"
#include "core/attr_market.h"
#include "core/lang.h"
#include "ui/zr_ui_theme.h"
#include "workbench/EntryTable.h"
#include "workbench/TimeText.h"
#include "workbench/WireDecoder.h"

namespace {

constexpr int kUsersInSight = 16;
constexpr int kFileHeight = 240;
constexpr int kTopMargin = 10;
constexpr int kScrollBarRoom = 8;

// The choices are read only. clazy:excludeall=non-pod-global-static
using Choices = std::vector<std::pair<QVariant, const char*>>;

const Choices kLanguages{{core::lang::kLanguageEnglish, "English"},
                         {core::lang::kLanguageSimplifiedChinese, "简体中文"},
                         {core::lang::kLanguageTraditionalChinese, "繁體中文"},
                         {core::lang::kLanguageJapanese, "日本語"},
                         {core::lang::kLanguageFrench, "Français"}};
const Choices kThemes{{int(zr_ui_theme::Manager::kThemeLight), "Light"},
                      {int(zr_ui_theme::Manager::kThemeDarkBlue), "Dark blue"},
                      {int(zr_ui_theme::Manager::kThemeBlack), "Black"}};
const Choices kEditions{{false, "Kestrel"}, {true, "Velora"}};
const Choices kOverrides{{int(EnEntryOverride::None), "No override"},
                         {int(EnEntryOverride::Open), "Force open"},
                         {int(EnEntryOverride::Closed), "Force closed"}};

QComboBox* NewCombo(const char* name, const Choices& choices, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (const auto& [value, text] : choices) {
        combo->addItem(QString::fromUtf8(text), value);
    }
    return combo;
}

void Select(QComboBox* combo, const QVariant& value) {
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(std::max(0, combo->findData(value)));
}

QLabel* NewTitle(const char* text, QWidget* parent) {
    auto* title = new QLabel(QString::fromLatin1(text), parent);
    title->setProperty("role", QStringLiteral("section"));
    return title;
}

QString TextOf(const std::vector<int>& numbers) {
    QStringList words;
    for (const int number : numbers) {
        words << QString::number(number);
    }
    return words.join(QLatin1Char(' '));
}

// The library that the service comes from. A module has no version of its own.
QString ModuleLibrary() {
    const auto service = GrowthService();
    Dl_info library{};
    if (!service || dladdr(*reinterpret_cast<void* const*>(service.get()), &library) == 0) {
        return QStringLiteral("not loaded");
    }
    const QFileInfo file(QString::fromLocal8Bit(library.dli_fname));
    return QStringLiteral("%1, built %2").arg(file.fileName(), file.lastModified().toString(Qt::ISODate));
}

/// A log line of the module about a refresh of the rights or of the VIP status.
struct RefreshLine {
    const char* text;
    const char* cause;   // of the request that follows
    const char* result;  // with the line's rest in place of %1
};

constexpr RefreshLine kRefreshLines[] = {
    {"[Premium] User Login Received", "a login or reconnect", nullptr},
    {"[Premium] Hourly Timer Fired", "the hourly timer", nullptr},
    {"[Premium] Language Changed", "a change of the language", nullptr},
    {"[Premium] Premium Change Push Received, Need", "push 20837", nullptr},
    {"[Vip] Vip Status Change Push Received", "push 20832", nullptr},
    {"[Premium] Send Request For ", nullptr, "rights requested"},
    {"[Vip] Send Request For Vip Status", nullptr, "VIP status requested"},
    {"[Premium] Parse Response Success", nullptr, "rights received"},
    {"[Premium] Request Failed On Channel Error", nullptr, "rights not received: channel error%1"},
    {"[Premium] Parse Response Failed", nullptr, "rights not received: unreadable answer%1"},
    {"[Premium] Server Returned Error Code", nullptr, "rights not received: error%1"},
    {"[Vip] Vip Status Response Failed", nullptr, "VIP status not received%1"},
};

}  // namespace

/// A line of the page, and a member of the state.
struct CUserPage::Fact {
    const char* key;
    const char* label;
    std::function<QString(const CUserPage&)> text;
};

const std::vector<CUserPage::Fact>& CUserPage::Facts() {
    static const std::vector<Fact> facts{
        {"user", "User", &CUserPage::User},
        {"edition", "Edition", [](const CUserPage& page) { return page.m_pEdition->currentText(); }},
        {"language", "Language", [](const CUserPage& page) { return page.m_pLanguage->currentText(); }},
        {"theme", "Theme", [](const CUserPage& page) { return page.m_pTheme->currentText(); }},
        {"markets", "Markets", [](const CUserPage&) { return TextOf(core::attr_market::GetCurrentUserAttrMarket()); }},
        {"rights", "Rights held", &CUserPage::Rights},
        {"vipOlderSystem", "VIP, older system", &CUserPage::OldVip},
        {"vipNewerSystem", "VIP, newer system", &CUserPage::NewVip},
        {"lastRefresh", "Last refresh",
         [](const CUserPage& page) {
             return page.m_strRefresh.isEmpty() ? QStringLiteral("none was seen yet") : page.m_strRefresh;
         }},
        {"overrides", "Overrides in force", &CUserPage::Overrides},
        {"clockOffset", "Server's clock",
         [](const CUserPage&) {
             const QString offset = time_text::ServerOffset();
             return offset.isEmpty() ? QStringLiteral("as this computer's") : offset;
         }},
        {"clientVersion", "Client", [](const CUserPage&) { return QStringLiteral(ZR_VERSION); }},
        {"moduleVersion", "Module", [](const CUserPage&) { return ModuleLibrary(); }},
        {"contractVersion", "Contract", [](const CUserPage&) { return QStringLiteral(ZR_VERSION); }},
        {"qtVersion", "Qt", [](const CUserPage&) { return QString::fromLatin1(qVersion()); }},
    };
    return facts;
}

CUserPage::CUserPage(CAIChatEntries& entries, CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent)
    : QWidget(parent),
      m_entries(entries),
      m_rights(rights),
      m_decoder(decoder),
      m_pUser(NewCombo("WorkbenchUser", {}, this)),
      m_pLogin(new QPushButton(QStringLiteral("Log in"), this)),
      m_pLogout(new QPushButton(QStringLiteral("Log out"), this)),
      m_pLanguage(NewCombo("WorkbenchLanguage", kLanguages, this)),
      m_pTheme(NewCombo("WorkbenchTheme", kThemes, this)),
      m_pEdition(NewCombo("WorkbenchEdition", kEditions, this)),
      m_pOverride(NewCombo("WorkbenchOverride", kOverrides, this)),
      m_pMarkets(new QLineEdit(this)),
      m_pMarketsNote(new QLabel(this)),
      m_pFile(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("SessionPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, kTopMargin, kScrollBarRoom, 0);
    layout->setSpacing(10);
    layout->addLayout(NewControls());
    layout->addLayout(NewFacts());
    layout->addWidget(m_pFile);
    layout->addWidget(NewTitle("AI chat entries per scene", this));
    layout->addWidget(new CEntryTable(entries, this));
    layout->addStretch(1);
    connect(&entries, &CAIChatEntries::Changed, this, &CUserPage::ShowOverride);
    connect(&rights, &CPremiumRights::Changed, this, &CUserPage::Refresh);
    ShowOverride();
    ShowUsers({}, 0);
    m_pFile->setObjectName(QStringLiteral("UserFile"));
    m_pFile->setAccessibleName(QStringLiteral("The whole state in the file"));
    m_pFile->setReadOnly(true);
    m_pFile->setTabChangesFocus(true);
    m_pFile->setMinimumHeight(kFileHeight);
    m_pFile->hide();
    theme::OnThemeChange(this, [this] { ShowTheme(); });
}

QLayout* CUserPage::NewControls() {
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_pMarketsNote->setObjectName(QStringLiteral("WorkbenchMarketsNote"));
    m_pMarketsNote->setProperty("role", QStringLiteral("muted"));
    m_pMarketsNote->setTextFormat(Qt::PlainText);
    m_pMarketsNote->hide();
    const auto add = [form](const char* text, QWidget* row, QWidget* field) {
        auto* label = new QLabel(QString::fromLatin1(text));
        label->setProperty("role", QStringLiteral("muted"));
        label->setBuddy(field);
        field->setAccessibleName(label->text());
        form->addRow(label, row);
    };
    add("User", NewUserRow(), m_pUser);
    add("Language", m_pLanguage, m_pLanguage);
    add("Theme", m_pTheme, m_pTheme);
    add("Edition", m_pEdition, m_pEdition);
    add("AI chat override", m_pOverride, m_pOverride);
    add("Markets", NewMarketsRow(), m_pMarkets);
    form->addRow(QString(), m_pMarketsNote);
    connect(m_pLanguage, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT LanguageWanted(m_pLanguage->currentData().toInt()); });
    connect(m_pTheme, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT ThemeWanted(m_pTheme->currentData().toInt()); });
    connect(m_pEdition, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT EditionWanted(m_pEdition->currentData().toBool()); });
    connect(m_pOverride, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { m_entries.SetOverride(EnEntryOverride(m_pOverride->currentData().toInt())); });
    return form;
}

QWidget* CUserPage::NewUserRow() {
    auto* row = new QWidget(this);
    m_pUser->setMaxVisibleItems(kUsersInSight);
    m_pLogin->setObjectName(QStringLiteral("WorkbenchLogin"));
    m_pLogout->setObjectName(QStringLiteral("WorkbenchLogout"));
    connect(m_pLogin, &QPushButton::clicked, this,
            [this] { Q_EMIT LoginWanted(m_pUser->currentData().toULongLong()); });
    connect(m_pLogout, &QPushButton::clicked, this, &CUserPage::LogoutWanted);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_pUser, 1);
    line->addWidget(m_pLogin);
    line->addWidget(m_pLogout);
    return row;
}

QWidget* CUserPage::NewMarketsRow() {
    auto* row = new QWidget(this);
    m_pMarkets->setObjectName(QStringLiteral("WorkbenchMarkets"));
    m_pMarkets->setPlaceholderText(QStringLiteral("Numbers, the leading one first, as 1 2 5"));
    auto* apply = new QPushButton(QStringLiteral("Apply"), row);
    apply->setObjectName(QStringLiteral("WorkbenchMarketsApply"));
    apply->setAccessibleName(QStringLiteral("Apply the markets"));
    connect(apply, &QPushButton::clicked, this, &CUserPage::AskMarkets);
    connect(m_pMarkets, &QLineEdit::returnPressed, this, &CUserPage::AskMarkets);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_pMarkets, 1);
    line->addWidget(apply);
    return row;
}

QLayout* CUserPage::NewFacts() {
    auto* title = new QHBoxLayout;
    auto* copy = new QPushButton(QStringLiteral("Copy"), this);
    copy->setObjectName(QStringLiteral("UserCopy"));
    copy->setAccessibleName(QStringLiteral("Copy the user's facts"));
    connect(copy, &QPushButton::clicked, this, &CUserPage::Copy);
    auto* gallery = new QPushButton(QStringLiteral("VIP gallery"), this);
    gallery->setObjectName(QStringLiteral("VipGalleryOpen"));
    connect(gallery, &QPushButton::clicked, this, [this] { CVipGallery::Open(window(), m_rights); });
    title->addWidget(NewTitle("This user, now", this), 1);
    title->addWidget(gallery);
    title->addWidget(copy);
    auto* form = new QFormLayout;
    form->addRow(title);
    for (const Fact& fact : Facts()) {
        auto* label = new QLabel(QString::fromLatin1(fact.label), this);
        label->setProperty("role", QStringLiteral("muted"));
        auto* value = new QLabel(this);
        value->setObjectName(QStringLiteral("UserFact_%1").arg(QLatin1String(fact.key)));
        value->setTextFormat(Qt::PlainText);
        value->setWordWrap(true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(label, value);
        m_facts[QString::fromLatin1(fact.key)] = value;
    }
    return form;
}

void CUserPage::Refresh() {
    for (const Fact& fact : Facts()) {
        m_facts[QString::fromLatin1(fact.key)]->setText(Text(fact));
    }
}

QString CUserPage::Text(const Fact& fact) const {
    return m_file.isEmpty() ? fact.text(*this) : m_file[QLatin1String(fact.key)].toString();
}

void CUserPage::ShowFile(const QJsonObject& state) {
    m_file = state;
    m_pFile->setPlainText(QString::fromUtf8(QJsonDocument(state).toJson()));
    m_pFile->setVisible(!state.isEmpty());
    Refresh();
}

void CUserPage::ShowLive() {
    ShowFile({});
}

void CUserPage::Copy() const {
    QStringList lines;
    for (const Fact& fact : Facts()) {
        lines << QStringLiteral("%1: %2").arg(QLatin1String(fact.label), Text(fact));
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

QJsonObject CUserPage::State() const {
    QJsonObject state;
    for (const Fact& fact : Facts()) {
        state[QLatin1String(fact.key)] = fact.text(*this);
    }
    return state;
}

QString CUserPage::User() const {
    if (m_nCurrent == 0) {
        return QStringLiteral("Nobody is logged in");
    }
    for (const ServerUser& user : m_users) {
        if (user.id == m_nCurrent) {
            return QStringLiteral("%1 (%2)").arg(user.name).arg(m_nCurrent);
        }
    }
    return QString::number(m_nCurrent);
}

QString CUserPage::Rights() const {
    QStringList held;
    for (const CPremiumUIAccessData& record : m_rights.Table()) {
        if (record.bHasPermission) {
            const int right = int(record.enAccess);
            held << QStringLiteral("%1 %2").arg(right).arg(
                m_decoder.EnumName("web_premium_access.PremiumAccess", right));
        }
    }
    const QString count = QStringLiteral("%1 of %2 in the table").arg(held.size()).arg(m_rights.Table().size());
    return held.isEmpty() ? count : QStringLiteral("%1: %2").arg(count, held.join(QStringLiteral(", ")));
}

QString CUserPage::OldVip() const {
    const VipStatus& vip = m_rights.Vip();
    const QString yes = vip.state == 1 ? QStringLiteral("yes: grade %1").arg(vip.grade)
                                       : QStringLiteral("no: state %1, not 1").arg(vip.state);
    return !CPremiumRights::HasModule() ? QStringLiteral("no: the module is missing")
                                        : yes + (vip.qualification ? QStringLiteral("; qualified for VIP")
                                                                   : QStringLiteral("; not qualified for VIP"));
}

QString CUserPage::NewVip() const {
    const VipStatus& vip = m_rights.Vip();
    if (!CPremiumRights::HasModule()) {
        return QStringLiteral("no: the module is missing");
    }
    const QString state = vip.newState == 0   ? QStringLiteral("no member")
                          : vip.newState == 1 ? QStringLiteral("member")
                          : vip.newState == 2 ? QStringLiteral("expired")
                                              : QStringLiteral("state %1").arg(vip.newState);
    if (!vip.isNewSystem) {
        return m_bVelora ? QStringLiteral("no: the server does not count the user in it")
                         : QStringLiteral("no: edition Kestrel; the server reports %1").arg(state);
    }
    return vip.newState == 1 ? QStringLiteral("yes: member, report value %1").arg(vip.engine)
                             : QStringLiteral("no: %1").arg(state);
}

void CUserPage::SetOverrides(std::function<QStringList()> overrides) {
    m_fnOverrides = std::move(overrides);
    Refresh();
}

QString CUserPage::Overrides() const {
    QStringList all = m_fnOverrides ? m_fnOverrides() : QStringList();
    if (m_entries.Override() != EnEntryOverride::None) {
        all << QStringLiteral("AI chat: %1").arg(m_pOverride->currentText().toLower());
    }
    if (m_bMarkets) {
        all << QStringLiteral("markets, until the next login");
    }
    return all.isEmpty() ? QStringLiteral("none") : all.join(QStringLiteral("; "));
}

void CUserPage::TakeLine(const LogEntry& entry) {
    for (const RefreshLine& line : kRefreshLines) {
        const QString start = QString::fromLatin1(line.text);
        if (!entry.record.text.startsWith(start)) {
            continue;
        }
        if (line.cause) {
            m_strCause = QString::fromLatin1(line.cause);
            return;
        }
        const QString result = QString::fromLatin1(line.result);
        if (result.endsWith(QLatin1String("requested"))) {
            m_strReason = m_strCause.isEmpty() ? QStringLiteral("a caller") : std::exchange(m_strCause, QString());
        }
        const qint64 timeMs = entry.time.toMSecsSinceEpoch();
        m_strRefresh =
            QStringLiteral("%1 %2: %3, because of %4")
                .arg(
                    time_text::Local(timeMs), time_text::Zone(),
                    result.contains(QLatin1String("%1")) ? result.arg(entry.record.text.mid(start.size(), 80)) : result,
                    m_strReason);
        Refresh();
        return;
    }
}

void CUserPage::AskMarkets() {
    static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
    std::vector<int> markets;
    const QStringList words = m_pMarkets->text().split(separators, Qt::SkipEmptyParts);
    m_pMarketsNote->show();
    for (const QString& word : words) {
        bool isNumber = false;
        markets.push_back(word.toInt(&isNumber));
        if (!isNumber || markets.back() < 0) {
            m_pMarketsNote->setText(QStringLiteral("No market numbers: %1").arg(word));
            return;
        }
    }
    Q_EMIT MarketsWanted(markets);
    m_bMarkets = true;
    m_pMarketsNote->setText(QStringLiteral("In force until the next login"));
    Refresh();
}

void CUserPage::ShowMarkets(const std::vector<int>& markets) {
    m_pMarkets->setText(TextOf(markets));
    m_bMarkets = false;
    m_pMarketsNote->hide();
    Refresh();
}

void CUserPage::ShowEdition(bool velora) {
    m_bVelora = velora;
    Select(m_pEdition, velora);
    Refresh();
}

void CUserPage::ShowLanguage(int languageId) {
    Select(m_pLanguage, languageId);  // any other number is English
    Refresh();
}

void CUserPage::ShowTheme() {
    Select(m_pTheme, int(zr_ui_theme::Manager::instance()->getTheme()));
    Refresh();
}

void CUserPage::ShowOverride() {
    Select(m_pOverride, int(m_entries.Override()));
    m_pOverride->setEnabled(m_entries.HasModule());
    Refresh();
}

void CUserPage::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    m_users = users;
    // A login outside the workbench selects that user. A refreshed list keeps the selection.
    const QVariant chosen = current != 0 && current != m_nCurrent ? QVariant(current) : m_pUser->currentData();
    m_nCurrent = current;
    const QSignalBlocker blocker(m_pUser);
    m_pUser->clear();
    for (const ServerUser& user : users) {
        m_pUser->addItem(QStringLiteral("%1  %2").arg(user.name).arg(user.id), user.id);
    }
    m_pUser->setCurrentIndex(std::max(0, m_pUser->findData(chosen)));
    m_pLogin->setEnabled(!users.empty());
    m_pLogout->setEnabled(current != 0);
    Refresh();
}
