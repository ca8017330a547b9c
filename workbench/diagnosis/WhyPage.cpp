#include "workbench/diagnosis/WhyPage.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QHeaderView>
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
constexpr int kStateColumn = 2;
constexpr QSize kThumbnail(144, 48);  // the shape of the popup
constexpr QSize kBannerSize(480, 80);
constexpr int kSortRole = Qt::UserRole;        // in the first column the subject's index
constexpr int kSearchRole = Qt::UserRole + 1;  // all texts of the row

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
      m_pNote(widgets::NewLabel("WhyNote"_q, "muted", this)),
      m_pStrip(widgets::NewOutcome("WhyStrip"_q, this)),
      m_pSentence(widgets::NewOutcome("WhySentence"_q, this)),
      m_pMessage(widgets::NewOutcome("WhyMessage"_q, this)),
      m_pDetail(widgets::New<QPlainTextEdit>("WhyDetail"_q, this, "Details"_q)),
      m_pPicture(widgets::New<ZRWebImageWidget>("WhyPicture"_q, this, "Picture of the ad"_q)),
      m_pAsk(widgets::NewButton("WhyAsk"_q, "Ask now"_q, this, [this] { Chosen().ask(); })),
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
    widgets::Column({widgets::Row({{m_pSearch, 1}, panel}), {m_pTable, 1}, m_pNote}, new QWidget(splitter));
    auto* answer = widgets::Column({m_pStrip, {m_pSentence, 1}});
    widgets::Column({widgets::Row({answer, m_pPicture}),
                     widgets::Row({m_pAsk, m_pForget, copy, nullptr}),
                     m_pMessage,
                     {m_pDetail, 1}},
                    new QWidget(splitter));
    widgets::Column({splitter}, this);
    m_batch.setSingleShot(true);
    connect(&m_batch, &QTimer::timeout, this, &CWhyPage::Update);
    connect(&tracker, &CTracker::Changed, this, &CWhyPage::UpdateLater);
    connect(&rights, &CPremiumRights::Changed, this, &CWhyPage::UpdateLater);
    connect(&entries, &CAIChatEntries::Changed, this, &CWhyPage::UpdateLater);
    theme::OnThemeChange(this, [this] { ShowAnswer(); });
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
    m_pTable->horizontalHeader()->setSectionResizeMode(kStateColumn, QHeaderView::ResizeToContents);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setMinimumHeight(4 * kRowHeight);
    m_pSearch->setPlaceholderText("Number, name, title or state"_q);
    m_pSearch->setClearButtonEnabled(true);
    connect(m_pSearch, &QLineEdit::textChanged, this, &CWhyPage::Update);
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        Say(QString());
        ShowBanner(nullptr);
        m_pDetail->clear();
        ShowAnswer();
    });
}

// ---- subjects

QVector<CWhyPage::Subject> CWhyPage::Subjects() {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    QVector<Subject> subjects;
    std::set<AdSlot> slots = m_positions;
    slots.insert(kBottomPopup);
    slots.insert(m_tracker.State().ads.keyBegin(), m_tracker.State().ads.keyEnd());
    for (const AdSlot& slot : slots) {
        Subject ad{"%1 %2"_q.arg(log_table::AdKind(slot.type)).arg(slot.position), QString(),
                   OfAd(m_tracker, slot, now)};
        if (slot == kBottomPopup) {
            ad.title = "bottom popup"_q;
            ad.ask = [this] { Push(R"({"adNew":{"adType":2,"adPosition":42,"delay":0}})"); };
        } else if (slot.type == kTypeBanner) {
            ad.ask = [this, slot] { AskBanner(slot.position); };
        }
        subjects.push_back(ad);
    }
    subjects.push_back({"Rights"_q, "refresh of all rights"_q, OfRefresh(m_tracker, now), [this] { AskRights({}); }});
    subjects.push_back({"VIP status"_q, QString(), OfVip(m_tracker, m_rights, now),
                        [this] { Push(R"({"vipChange":{"windowSeconds":0}})"); }});
    for (const EntryPage& page : kEntryPages) {
        subjects.push_back({"Chat scene %1"_q.arg(page.scene), QString::fromUtf8(page.title),
                            OfScene(m_tracker, m_entries, page.scene, now)});
    }
    int number = 0;
    for (const ChatOpen& open : m_tracker.State().opens) {
        const QString title = "%1, page scene %2"_q.arg(log_table::Clock(open.timeMs, now)).arg(open.scene);
        subjects.push_back({"Chat open %1"_q.arg(++number), title, OfOpen(open)});
    }
    for (const int right : ListedRights()) {
        const QString title = RightName(right) + "  "_q + m_rights.Table().value(EnPremiumAccess(right)).strMainTitle;
        subjects.push_back({"Right %1"_q.arg(right), title.trimmed(),
                            OfRight(m_tracker, m_rights, EnPremiumAccess(right), now),
                            [this, right] { AskRights({right}); }});
    }
    return subjects;
}

// Rights that the server's answer does not name are listed while the search names them.
std::set<int> CWhyPage::ListedRights() const {
    const auto& table = m_rights.Table();
    std::set<int> rights(table.keyBegin(), table.keyEnd());
    const QString search = m_pSearch->text().simplified();
    for (int right = 1; !search.isEmpty() && right <= kHighestRight; ++right) {
        const bool isNamed = search.size() > 2 && RightName(right).contains(search, Qt::CaseInsensitive);
        if (isNamed || search == QString::number(right)) {
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

CWhyPage::Subject CWhyPage::Chosen() const {
    const QModelIndexList rows = m_pTable->selectionModel()->selectedRows();
    return rows.isEmpty() ? Subject() : m_subjects.value(rows.first().data(kSortRole).toInt());
}

// ---- display

void CWhyPage::UpdateLater() {
    if (m_batch.remainingTime() > kBatchMs || !m_batch.isActive()) {
        m_batch.start(kBatchMs);
    }
}

void CWhyPage::Update() {
    m_subjects = Subjects();
    auto gone = m_rows;
    const size_t before = m_rows.size();
    for (int index = 0; index < m_subjects.size(); ++index) {
        ShowRow(index);
        gone.erase(m_subjects[index].name);
    }
    for (const auto& [name, item] : gone) {
        m_pModel->removeRow(item->row());
        m_rows.erase(name);
    }
    QString pattern("^"_q);
    const QStringList words = m_pSearch->text().simplified().split(QLatin1Char(' '));
    for (const QString& word : words) {
        pattern += "(?=.*%1)"_q.arg(QRegularExpression::escape(word));
    }
    m_pFilter->setFilterRegularExpression(QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption));
    if (m_rows.size() != before) {
        widgets::FitColumns(*m_pTable);
    }
    const QString nothing = m_pFilter->rowCount() != 0 ? QString() : "Nothing with these words. "_q;
    const QString offset = readable::ServerOffset();
    m_pNote->setText(
        nothing + "Times are in the zone %1."_q.arg(readable::Zone()) +
        (offset.isEmpty() ? QString() : " The server's clock, which windows and intervals use: %1."_q.arg(offset)));
    ShowAnswer();
    if (isVisible()) {
        m_batch.start(kTickMs);  // the sentences name the time that remains
    }
}

void CWhyPage::ShowRow(int index) {
    const Subject& subject = m_subjects.at(index);
    const QStringList texts{subject.name, subject.title, subject.answer.state, subject.answer.counts, UserText()};
    QStandardItem*& first = m_rows[subject.name];
    if (!first) {
        first = new QStandardItem;
        m_pModel->appendRow(first);
    }
    for (int column = 0; column < texts.size(); ++column) {
        const QModelIndex cell = m_pModel->index(first->row(), column);
        m_pModel->setData(cell, texts[column]);
        m_pModel->setData(cell, host::kit::TipText(texts[column]), Qt::ToolTipRole);
        m_pModel->setData(cell, column == 0 ? QVariant(index) : QVariant(texts[column]), kSortRole);
    }
    first->setData(texts.join(QLatin1Char(' ')), kSearchRole);
}

void CWhyPage::ShowAnswer() {
    const Subject chosen = Chosen();
    const bool isChosen = !chosen.name.isEmpty();
    QString strip;
    for (const QString& step : chosen.answer.steps) {
        const QColor color(step.startsWith(QChar(0x2713))   ? theme::kUp
                           : step.startsWith(QChar(0x2717)) ? theme::kDown
                                                            : theme::kMuted);
        // A sign stays with its word at the end of a line.
        const QString whole = QString(step).replace(QLatin1Char(' '), "&nbsp;"_q);
        strip += "<span style=\"color:%1\">%2</span> &nbsp; "_q.arg(color.name(), whole);
    }
    m_pStrip->setText(strip);
    m_pSentence->setText(isChosen ? chosen.answer.sentence : "Choose a row to see why it is not shown."_q);
    m_pAsk->setEnabled(bool(chosen.ask));
    m_pAsk->setToolTip(
        host::kit::TipText(isChosen && !chosen.ask ? "The module asks for this at a login only"_q : QString()));
    m_pForget->setEnabled(chosen.title == QLatin1String("bottom popup"));
    // A hidden page must load nothing.
    if (chosen.answer.image != m_strPicture && isVisible()) {
        m_strPicture = chosen.answer.image;
        m_pPicture->SetUrl(m_strPicture, QString());
    }
    m_pPicture->setVisible(!m_strPicture.isEmpty());
    // A selected text stays, so that it can be copied.
    const QString details = chosen.answer.details.join(QLatin1Char('\n'));
    if (details != m_pDetail->toPlainText() && !m_pDetail->textCursor().hasSelection()) {
        const int scrolled = m_pDetail->verticalScrollBar()->value();
        m_pDetail->setPlainText(details);
        m_pDetail->verticalScrollBar()->setValue(scrolled);
    }
}

void CWhyPage::Say(const QString& words, bool isGood) {
    widgets::ShowOutcome(m_pMessage, words, isGood ? widgets::EnOutcome::Good : widgets::EnOutcome::Bad);
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
    Update();
    ForgetServer();
}

void CWhyPage::ShowUsers(const std::vector<ServerUser>& users) {
    m_users = users;
    UpdateLater();
}

void CWhyPage::ForgetServer() {
    m_server.Ask("GET", "/v1/scenario"_q, QByteArray(), this, [this](const ServerAnswer& answer) {
        if (!answer.error.isEmpty()) {
            return;
        }
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
    Say("Asked. The banner is shown here when it comes."_q);
    CAds::AskBanner(position, kBannerSize, [page = QPointer<CWhyPage>(this)](QWidget* banner) {
        if (page) {
            page->ShowBanner(banner);
        } else {
            delete banner;
        }
    });
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
    Chosen().ask();
}

void CWhyPage::CopyAnswer() {
    const Subject chosen = Chosen();
    const QStringList head{"%1, user %2"_q.arg(chosen.name, UserText()), chosen.answer.steps.join(QLatin1Char(' ')),
                           chosen.answer.sentence};
    QApplication::clipboard()->setText((head + chosen.answer.details).join(QLatin1Char('\n')));
    Say("Copied"_q);
}

QJsonObject CWhyPage::State() {
    Update();
    QJsonArray subjects;
    for (const Subject& subject : qAsConst(m_subjects)) {
        const Explanation& answer = subject.answer;
        subjects.append(QJsonObject{{"subject"_q, subject.name},
                                    {"name"_q, subject.title},
                                    {"user"_q, UserText()},
                                    {"state"_q, answer.state},
                                    {"counts"_q, answer.counts},
                                    {"sentence"_q, answer.sentence},
                                    {"steps"_q, QJsonArray::fromStringList(answer.steps)},
                                    {"details"_q, QJsonArray::fromStringList(answer.details)}});
    }
    return {{"subjects"_q, subjects}};
}
