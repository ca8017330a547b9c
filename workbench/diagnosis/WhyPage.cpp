#include "workbench/diagnosis/WhyPage.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QJsonArray>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>

#include "AIChatEntries.h"
#include "AdPanelWindow.h"
#include "Ads.h"
#include "EntryScenes.h"
#include "PremiumRights.h"
#include "Theme.h"
#include "core/config_local.h"
#include "ui/KitPaint.h"
#include "ui/ZRWebImageWidget.h"
#include "workbench/FieldNode.h"
#include "workbench/Widgets.h"
#include "workbench/WireDecoder.h"

using namespace explanation;

namespace {

constexpr int kBatchMs = 100;
constexpr int kTickMs = 1'000;
constexpr int kRowHeight = 24;
constexpr int kHighestRight = 4'000;
constexpr int kIntervalTypes = 10;
constexpr QSize kThumbnail(144, 48);  // the shape of the popup
constexpr QSize kBannerSize(480, 80);
constexpr int kKeyRole = Qt::UserRole;
constexpr int kSortRole = Qt::UserRole + 1;
constexpr int kSearchRole = Qt::UserRole + 2;  // the kind and all texts of the row

}  // namespace

CWhyPage::CWhyPage(const CTracker& tracker, CPremiumRights& rights, const CAIChatEntries& entries,
                   IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_tracker(tracker),
      m_rights(rights),
      m_entries(entries),
      m_server(server),
      m_pModel(new QStandardItemModel(this)),
      m_pFilter(new QSortFilterProxyModel(this)),
      m_pTable(widgets::New<QTableView>("WhyTable"_q, this, "Subjects"_q)),
      m_pSearch(widgets::New<QLineEdit>("WhySearch"_q, this, "Search"_q)),
      // The values are the first letters of the keys of each kind.
      m_pKind(widgets::NewCombo(
          "WhyKind"_q, "Kind"_q,
          {{"aorvc"_q, "All"_q}, {"a"_q, "Ads"_q}, {"co"_q, "AI chat"_q}, {"rv"_q, "Rights and VIP"_q}}, this,
          [this](const QVariant&) { Update(); })),
      m_pNote(widgets::NewLabel("WhyNote"_q, "muted", this)),
      m_pStrip(widgets::NewOutcome("WhyStrip"_q, this)),
      m_pSentence(widgets::NewOutcome("WhySentence"_q, this)),
      m_pMessage(widgets::NewOutcome("WhyMessage"_q, this)),
      m_pDetail(widgets::New<QPlainTextEdit>("WhyDetail"_q, this, "Details"_q)),
      m_pPicture(widgets::New<ZRWebImageWidget>("WhyPicture"_q, this, "Picture of the ad"_q)),
      m_pAsk(widgets::NewButton("WhyAsk"_q, "Ask now"_q, this, [this] { AskNow(); })),
      m_pForget(widgets::NewButton("WhyForget"_q, "Forget and ask"_q, this, [this] { ForgetAndAsk(); })) {
    setObjectName("WhyPage"_q);
    m_pStrip->setTextFormat(Qt::RichText);
    m_pPicture->setFixedSize(kThumbnail);
    m_pForget->setToolTip("Forgets when the popup was last shown to this user, then asks"_q);
    m_pDetail->setReadOnly(true);
    m_pDetail->setTabChangesFocus(true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setMinimumHeight(4 * kRowHeight);
    SetUpList();
    auto* panel =
        widgets::NewButton("AdPanelOpen"_q, "Popup panel"_q, this, [this] { CAdPanelWindow::Open(window()); });
    auto* copy = widgets::NewButton("WhyCopy"_q, "Copy answer"_q, this, [this] { CopyAnswer(); });
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    widgets::Column({widgets::Row({{m_pSearch, 1}, m_pKind, panel}), {m_pTable, 1}, m_pNote}, new QWidget(splitter));
    auto* answer = widgets::Column({m_pStrip, {m_pSentence, 1}});
    widgets::Column({widgets::Row({answer, m_pPicture}),
                     widgets::Row({m_pAsk, m_pForget, copy, nullptr}),
                     m_pMessage,
                     {m_pDetail, 1}},
                    new QWidget(splitter));
    widgets::Column({splitter}, this);
    auto* tick = new QTimer(this);
    connect(tick, &QTimer::timeout, this, &CWhyPage::ShowSentence);
    tick->start(kTickMs);
    m_batch.setSingleShot(true);
    connect(&m_batch, &QTimer::timeout, this, &CWhyPage::Update);
    connect(&tracker, &CTracker::Changed, this, &CWhyPage::UpdateLater);
    connect(&rights, &CPremiumRights::Changed, this, &CWhyPage::UpdateLater);
    connect(&entries, &CAIChatEntries::Changed, this, &CWhyPage::UpdateLater);
    theme::OnThemeChange(this, [this] { ShowSentence(); });
    Update();
    m_pTable->sortByColumn(0, Qt::AscendingOrder);
    m_pTable->selectRow(0);
}

void CWhyPage::SetUpList() {
    m_pModel->setHorizontalHeaderLabels({"Subject"_q, "Name"_q, "State"_q, "Ads"_q, "User"_q});
    m_pFilter->setSourceModel(m_pModel);
    m_pFilter->setSortRole(kSortRole);
    m_pFilter->setFilterRole(kSearchRole);
    widgets::SetUpTable(*m_pTable);
    m_pTable->setModel(m_pFilter);
    m_pTable->setSortingEnabled(true);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setMinimumHeight(4 * kRowHeight);
    m_pSearch->setPlaceholderText("Number, name, title or state"_q);
    m_pSearch->setClearButtonEnabled(true);
    connect(m_pSearch, &QLineEdit::textChanged, this, &CWhyPage::Update);
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        Say(QString(), true);
        ShowBanner(nullptr);
        ShowAnswer();
    });
}

// ---- subjects

std::vector<CWhyPage::Subject> CWhyPage::Subjects() {
    std::set<AdSlot> slots = m_positions;
    slots.insert(kBottomPopup);
    for (const auto& [slot, ad] : m_tracker.State().ads) {
        slots.insert(slot);
    }
    std::vector<Subject> subjects;
    for (const AdSlot& slot : slots) {
        Subject ad{"a%1/%2"_q.arg(slot.type).arg(slot.position),
                   "%1 %2"_q.arg(log_table::AdKind(slot.type)).arg(slot.position), QString(),
                   [this, slot](qint64 now) { return OfAd(m_tracker, slot, now); }};
        if (slot == kBottomPopup) {
            ad.title = "bottom popup"_q;
            ad.ask = [this] { Push(R"({"adNew":{"adType":2,"adPosition":42,"delay":0}})"); };
        } else if (slot.type == kTypeBanner) {
            ad.ask = [this, slot] { AskBanner(slot.position); };
        }
        subjects.push_back(ad);
    }
    subjects.push_back({"r"_q, "Rights"_q, "refresh of all rights"_q,
                        [this](qint64 now) { return OfRefresh(m_tracker, now); }, [this] { AskRights({}); }});
    subjects.push_back({"v"_q, "VIP status"_q, QString(),
                        [this](qint64 now) { return OfVip(m_tracker, m_rights, now); },
                        [this] { Push(R"({"vipChange":{"windowSeconds":0}})"); }});
    for (const EntryPage& page : kEntryPages) {
        subjects.push_back(
            {"c%1"_q.arg(page.scene), "Chat scene %1"_q.arg(page.scene), QString::fromUtf8(page.title),
             [this, scene = page.scene](qint64 now) { return OfScene(m_tracker, m_entries, scene, now); }});
    }
    for (const ChatOpen& open : m_tracker.State().opens) {
        const QString time = log_table::Clock(open.timeMs, QDateTime::currentMSecsSinceEpoch());
        subjects.push_back({"o%1"_q.arg(open.timeMs), "Chat open"_q, "%1, page scene %2"_q.arg(time).arg(open.scene),
                            [open](qint64 /*now*/) { return OfOpen(open); }});
    }
    for (const int right : ListedRights()) {
        const QString title = m_rights.Table().value(EnPremiumAccess(right)).strMainTitle;
        subjects.push_back(
            {"r%1"_q.arg(right), "Right %1"_q.arg(right), (RightName(right) + "  "_q + title).trimmed(),
             [this, right](qint64 now) { return OfRight(m_tracker, m_rights, EnPremiumAccess(right), now); },
             [this, right] { AskRights({right}); }});
    }
    return subjects;
}

// Rights that the server's answer does not name are listed while the search names them.
std::set<int> CWhyPage::ListedRights() const {
    const auto& table = m_rights.Table();
    std::set<int> rights(table.keyBegin(), table.keyEnd());
    const QString search = m_pSearch->text().simplified();
    if (search.toInt() > 0) {
        rights.insert(search.toInt());
    }
    for (int right = 0; search.size() > 2 && right <= kHighestRight; ++right) {
        if (RightName(right).contains(search, Qt::CaseInsensitive)) {
            rights.insert(right);
        }
    }
    return rights;
}

QString CWhyPage::RightName(int right) const {
    return wire::EnumName("web_premium_access.PremiumAccess", right);
}

QString CWhyPage::UserText() const {
    const quint64 user = m_tracker.State().User();
    return (user == 0 ? QString() : widgets::UserText(m_users, user)) +
           (m_tracker.State().isLoggedOut ? " (logged out)"_q : QString());
}

const CWhyPage::Subject* CWhyPage::Chosen() const {
    const QModelIndexList rows = m_pTable->selectionModel()->selectedRows();
    const auto found = rows.isEmpty() ? m_subjects.end() : m_subjects.find(rows.first().data(kKeyRole).toString());
    return found == m_subjects.end() ? nullptr : &found->second;
}

Explanation CWhyPage::ChosenAnswer() const {
    const Subject* subject = Chosen();
    return subject ? subject->explain(QDateTime::currentMSecsSinceEpoch())
                   : Explanation{{}, {}, "Choose a row to see why it is not shown."_q, {}, {}, {}};
}

// ---- display

void CWhyPage::UpdateLater() {
    if (!m_batch.isActive()) {
        m_batch.start(kBatchMs);
    }
}

void CWhyPage::Update() {
    m_subjects.clear();
    const size_t before = m_rows.size();
    for (const Subject& subject : Subjects()) {
        ShowRow(subject, int(m_subjects.size()));
        m_subjects.emplace(subject.key, subject);
    }
    for (const auto& [key, item] : m_rows) {
        if (m_subjects.count(key) == 0) {
            item->setData(QString(), kSearchRole);  // no kind fits
        }
    }
    QString pattern = "^[%1]"_q.arg(m_pKind->currentData().toString());
    const QStringList words = m_pSearch->text().simplified().split(QLatin1Char(' '));
    for (const QString& word : words) {
        pattern += "(?=.*%1)"_q.arg(QRegularExpression::escape(word));
    }
    m_pFilter->setFilterRegularExpression(QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption));
    if (m_rows.size() != before) {
        widgets::FitColumns(*m_pTable);
    }
    const QString nothing = m_pFilter->rowCount() != 0 ? QString() : "Nothing of this kind, or with these words. "_q;
    const QString offset = readable::ServerOffset();
    m_pNote->setText(
        nothing + "Times are in the zone %1."_q.arg(readable::Zone()) +
        (offset.isEmpty() ? QString() : " The server's clock, which windows and intervals use: %1."_q.arg(offset)));
    ShowAnswer();
}

void CWhyPage::ShowRow(const Subject& subject, int order) {
    const Explanation explained = subject.explain(QDateTime::currentMSecsSinceEpoch());
    const QStringList texts{subject.name, subject.title, explained.state, explained.counts, UserText()};
    QStandardItem*& first = m_rows[subject.key];
    if (!first) {
        first = new QStandardItem;
        first->setData(subject.key, kKeyRole);
        m_pModel->appendRow(first);
    }
    for (int column = 0; column < texts.size(); ++column) {
        const QModelIndex cell = m_pModel->index(first->row(), column);
        m_pModel->setData(cell, texts[column]);
        m_pModel->setData(cell, host::kit::TipText(texts[column]), Qt::ToolTipRole);
        m_pModel->setData(cell, column == 0 ? QVariant(order) : QVariant(texts[column]), kSortRole);
    }
    first->setData(subject.key.at(0) + texts.join(QLatin1Char(' ')), kSearchRole);
}

void CWhyPage::ShowSentence() {
    const Explanation explained = ChosenAnswer();
    QString strip;
    for (const QString& step : explained.steps) {
        const QColor color(step.startsWith(QChar(0x2713))   ? theme::kUp
                           : step.startsWith(QChar(0x2717)) ? theme::kDown
                                                            : theme::kMuted);
        // A sign stays with its word at the end of a line.
        const QString whole = QString(step).replace(QLatin1Char(' '), "&nbsp;"_q);
        strip += "<span style=\"color:%1\">%2</span> &nbsp; "_q.arg(color.name(), whole);
    }
    m_pStrip->setText(strip);
    m_pSentence->setText(explained.sentence);
}

void CWhyPage::ShowAnswer() {
    ShowSentence();
    const Explanation explained = ChosenAnswer();
    const Subject* subject = Chosen();
    const bool canAsk = subject && subject->ask;
    m_pAsk->setEnabled(canAsk);
    const QString why = subject && !canAsk ? "The module asks for this at a login only"_q : QString();
    m_pAsk->setToolTip(host::kit::TipText(why));
    m_pForget->setEnabled(subject && subject->title == QLatin1String("bottom popup"));
    // A hidden page must load nothing.
    if (explained.image != m_strPicture && isVisible()) {
        m_strPicture = explained.image;
        m_pPicture->SetUrl(m_strPicture, QString());
    }
    m_pPicture->setVisible(!m_strPicture.isEmpty());
    const QString details = explained.details.join(QLatin1Char('\n'));
    if (details != m_pDetail->toPlainText()) {
        const int scrolled = m_pDetail->verticalScrollBar()->value();
        m_pDetail->setPlainText(details);
        m_pDetail->verticalScrollBar()->setValue(scrolled);
    }
}

void CWhyPage::Say(const QString& words, bool good) {
    widgets::ShowOutcome(m_pMessage, words, good ? widgets::EnOutcome::Good : widgets::EnOutcome::Bad);
    m_pMessage->setVisible(!words.isEmpty());
}

// The page owns the banner, which reports exposures while it is shown.
void CWhyPage::ShowBanner(QWidget* banner) {
    delete m_pBanner;
    m_pBanner = banner;
    if (banner) {
        layout()->addWidget(banner);
        banner->show();
    }
}

// ---- actions

void CWhyPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowAnswer();
    ForgetServer();
}

void CWhyPage::ShowUsers(const std::vector<ServerUser>& users) {
    m_users = users;
    UpdateLater();
}

void CWhyPage::ForgetServer() {
    m_server.Ask("GET", "/v1/scenario"_q, QByteArray(), this, [this](const ServerAnswer& answer) {
        m_positions.clear();
        for (const Json::Value& ad : json::Items(json::Member(answer.body, "ads"))) {
            const auto type = json::Number(json::Member(ad, "adType"));
            const auto position = json::Number(json::Member(ad, "adPosition"));
            if (type && position) {
                m_positions.insert({int(*type), int(*position)});
            }
        }
        UpdateLater();
    });
}

void CWhyPage::Push(const char* json) {
    m_server.Ask("POST", "/v1/push"_q, QByteArray(json), this, [this](const ServerAnswer& answer) {
        Say(answer.error.isEmpty() ? "Asked by a push of the server"_q : answer.error, answer.error.isEmpty());
    });
}

void CWhyPage::AskRights(const QVector<int>& rights) {
    const unsigned long session =
        rights.isEmpty() ? CPremiumRights::AskAll(true) : CPremiumRights::AskList(rights, true);
    Say(session != 0 ? "Asked, session %1"_q.arg(session)
                     : "Nobody was asked: the module is not there or has not started"_q,
        session != 0);
}

void CWhyPage::AskBanner(int position) {
    Say("Asked. The banner is shown here when it comes."_q, true);
    CAds::AskBanner(position, kBannerSize, [page = QPointer<CWhyPage>(this)](QWidget* banner) {
        if (page) {
            page->ShowBanner(banner);
        } else {
            delete banner;
        }
    });
}

void CWhyPage::AskNow() {
    if (const Subject* subject = Chosen(); subject && subject->ask) {
        subject->ask();
    }
}

// The module stores the time of the last display for each type of interval.
void CWhyPage::ForgetAndAsk() {
    for (int type = 0; type < kIntervalTypes; ++type) {
        const QString key = "AdLastShowTimeStampKey_2_42_%1_%2"_q.arg(m_tracker.State().User()).arg(type);
        long shown = 0;
        if (core::config_local::AppCfgReadInt64(key.toStdString(), shown) && shown != 0 &&
            !core::config_local::AppCfgSaveInt64(key.toStdString(), 0)) {
            Say("The store did not take the change"_q, false);
            return;
        }
    }
    AskNow();
}

void CWhyPage::CopyAnswer() {
    const Explanation explained = ChosenAnswer();
    if (const Subject* subject = Chosen()) {
        const QStringList head{"%1, user %2"_q.arg(subject->name, UserText()), explained.steps.join(QLatin1Char(' ')),
                               explained.sentence};
        QApplication::clipboard()->setText((head + explained.details).join(QLatin1Char('\n')));
        Say("Copied"_q, true);
    }
}

QJsonObject CWhyPage::State() const {
    QJsonArray subjects;
    for (const auto& [key, subject] : m_subjects) {
        const Explanation explained = subject.explain(QDateTime::currentMSecsSinceEpoch());
        subjects.append(QJsonObject{{"subject"_q, subject.name},
                                    {"name"_q, subject.title},
                                    {"user"_q, UserText()},
                                    {"state"_q, explained.state},
                                    {"counts"_q, explained.counts},
                                    {"sentence"_q, explained.sentence},
                                    {"steps"_q, QJsonArray::fromStringList(explained.steps)},
                                    {"details"_q, QJsonArray::fromStringList(explained.details)}});
    }
    return {{"subjects"_q, subjects}};
}
