#include "workbench/diagnosis/WhyPage.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariant>
#include <algorithm>

#include "AIChatEntries.h"
#include "AdPanelWindow.h"
#include "Ads.h"
#include "EntryScenes.h"
#include "PremiumRights.h"
#include "Theme.h"
#include "core/config_local.h"
#include "ui/KitPaint.h"
#include "ui/ZRWebImageWidget.h"
#include "workbench/TimeText.h"
#include "workbench/Widgets.h"
#include "workbench/WireDecoder.h"
#include "workbench/diagnosis/RightText.h"

namespace {

constexpr int kBatchMs = 100;
constexpr int kTickMs = 1'000;
constexpr int kRowHeight = 24;
constexpr int kFieldWidth = 170;
constexpr int kHighestRight = 4'000;
constexpr int kIntervalTypes = 10;
constexpr QSize kThumbnail(132, 74);
constexpr QSize kBannerSize(480, 80);
constexpr int kKeyRole = Qt::UserRole;
constexpr int kSortRole = Qt::UserRole + 1;

enum EnColumn { kColumnSubject, kColumnName, kColumnState, kColumnCounts, kColumnUser };
// Read only. clazy:excludeall=non-pod-global-static
const QStringList kColumns{"Subject"_q, "Name"_q, "State"_q, "Ads"_q, "User"_q};
// The choices of kinds, and the first letters of the keys that belong to them.
constexpr std::pair<const char*, const char*> kKinds[] = {
    {"All", ""}, {"Ads", "a"}, {"AI chat", "co"}, {"Rights and VIP", "rv"}};

template <class Widget>
Widget* NewWidget(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

/// Shows the rows of a kind that contain each word of the search in any column.
class CSubjectFilter : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void Set(const QString& search, const QString& kinds) {
        m_words = search.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        m_strKinds = kinds;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        QString text;
        for (int column = 0; column < sourceModel()->columnCount(); ++column) {
            text += sourceModel()->index(row, column, parent).data().toString() + QLatin1Char('\n');
        }
        const QString key = sourceModel()->index(row, 0, parent).data(kKeyRole).toString();
        return (m_strKinds.isEmpty() || (!key.isEmpty() && m_strKinds.contains(key.at(0)))) &&
               std::all_of(m_words.begin(), m_words.end(),
                           [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
    }

private:
    QStringList m_words;
    QString m_strKinds;
};

bool operator==(const Detail& left, const Detail& right) {
    return left.name == right.name && left.value == right.value && left.good == right.good &&
           left.children.size() == right.children.size() &&
           std::equal(left.children.begin(), left.children.end(), right.children.begin(),
                      [](const Detail& one, const Detail& other) { return one == other; });
}

void AddDetail(QTreeWidgetItem* parent, const Detail& detail) {
    auto* item = new QTreeWidgetItem(parent, {detail.name, detail.value});
    item->setToolTip(1, host::kit::TipText(detail.value));
    if (detail.good) {
        item->setForeground(1, QColor(*detail.good ? theme::kUp : theme::kDown));
    }
    for (const Detail& child : detail.children) {
        AddDetail(item, child);
    }
}

/// The module's store key for the last display of the popup to a user.
std::string LastShownKey(quint64 user, int intervalType) {
    return "AdLastShowTimeStampKey_%1_%2_%3_%4"_q.arg(kBottomPopup.type)
        .arg(kBottomPopup.position)
        .arg(user)
        .arg(intervalType)
        .toStdString();
}

}  // namespace

CWhyPage::CWhyPage(const CTracker& tracker, CPremiumRights& rights, const CAIChatEntries& entries,
                   const CWireDecoder& decoder, IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_tracker(tracker),
      m_rights(rights),
      m_entries(entries),
      m_decoder(decoder),
      m_server(server),
      m_pModel(new QStandardItemModel(this)),
      m_pFilter(new CSubjectFilter(this)),
      m_pTable(NewWidget<QTableView>("WhyTable", this)),
      m_pSearch(NewWidget<QLineEdit>("WhySearch", this)),
      m_pKind(NewWidget<QComboBox>("WhyKind", this)),
      m_pNothing(NewWidget<QLabel>("WhyNothing", this)),
      m_pClock(NewWidget<QLabel>("WhyClock", this)),
      m_pSentence(NewWidget<QLabel>("WhySentence", this)),
      m_pMessage(NewWidget<QLabel>("WhyMessage", this)),
      m_pDetail(NewWidget<QTreeWidget>("WhyDetail", this)),
      m_pPicture(new ZRWebImageWidget(this)),
      m_pAsk(NewButton("WhyAsk", "Ask now"_q, &CWhyPage::AskNow)),
      m_pForget(NewButton("WhyForget", "Forget and ask"_q, &CWhyPage::ForgetAndAsk)) {
    setObjectName("WhyPage"_q);
    for (int number = 0; number <= kHighestRight; ++number) {
        const QString name = right_text::Name(decoder, number);
        if (!name.isEmpty()) {
            m_rightNames.emplace_back(number, name);
        }
    }
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName("WhySplitter"_q);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(NewList());
    splitter->addWidget(NewAnswer());
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    m_batch.setSingleShot(true);
    m_batch.setInterval(kBatchMs);
    connect(&m_batch, &QTimer::timeout, this, &CWhyPage::Update);
    connect(&m_tick, &QTimer::timeout, this, &CWhyPage::ShowSentence);
    connect(&tracker, &CTracker::Changed, this, &CWhyPage::UpdateLater);
    connect(&rights, &CPremiumRights::Changed, this, &CWhyPage::UpdateLater);
    connect(&entries, &CAIChatEntries::Changed, this, &CWhyPage::UpdateLater);
    m_tick.start(kTickMs);
    theme::OnThemeChange(this, [this] {
        m_details.clear();
        ShowAnswer();
    });
    Update();
    m_pTable->sortByColumn(kColumnSubject, Qt::AscendingOrder);
    m_pTable->selectRow(0);
}

QPushButton* CWhyPage::NewButton(const char* name, const QString& text, void (CWhyPage::*clicked)()) {
    auto* button = NewWidget<QPushButton>(name, this);
    button->setText(text);
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QWidget* CWhyPage::NewList() {
    auto* list = new QWidget(this);
    m_pModel->setHorizontalHeaderLabels(kColumns);
    m_pFilter->setSourceModel(m_pModel);
    m_pFilter->setSortRole(kSortRole);
    widgets::SetUpTable(*m_pTable);
    m_pTable->setModel(m_pFilter);
    m_pTable->setSortingEnabled(true);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setAccessibleName("Subjects"_q);
    m_pTable->setMinimumHeight(4 * kRowHeight);
    m_pSearch->setPlaceholderText("Number, name, title or state"_q);
    m_pSearch->setAccessibleName("Search"_q);
    m_pSearch->setClearButtonEnabled(true);
    m_pKind->setAccessibleName("Kind"_q);
    for (const auto& [name, keys] : kKinds) {
        m_pKind->addItem(QString::fromUtf8(name), QString::fromUtf8(keys));
    }
    for (QLabel* label : {m_pNothing, m_pClock}) {
        label->setProperty("role", "muted"_q);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* popupPanel = NewWidget<QPushButton>("AdPanelOpen", list);
    popupPanel->setText("Popup panel"_q);
    connect(popupPanel, &QPushButton::clicked, this, [this] { CAdPanelWindow::Open(window()); });
    auto* head = new QHBoxLayout;
    head->addWidget(m_pSearch, 1);
    head->addWidget(m_pKind);
    head->addWidget(popupPanel);
    auto* layout = new QVBoxLayout(list);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(head);
    layout->addWidget(m_pTable, 1);
    layout->addWidget(m_pNothing);
    layout->addWidget(m_pClock);
    connect(m_pSearch, &QLineEdit::textChanged, this, &CWhyPage::Update);
    connect(m_pKind, qOverload<int>(&QComboBox::currentIndexChanged), this, &CWhyPage::Update);
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        Say(QString(), true);
        ShowBanner(nullptr);
        ShowAnswer();
    });
    return list;
}

QWidget* CWhyPage::NewAnswer() {
    auto* answer = new QWidget(this);
    m_pStrip = new QHBoxLayout;
    m_pStrip->setSpacing(10);
    for (QLabel* label : {m_pSentence, m_pMessage}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    m_pMessage->hide();
    m_pPicture->setObjectName("WhyPicture"_q);
    m_pPicture->setAccessibleName("Picture of the ad"_q);
    m_pPicture->setFixedSize(kThumbnail);
    m_pPicture->hide();
    m_pForget->setToolTip("Forgets when the popup was last shown to this user, then asks"_q);
    m_pDetail->setColumnCount(2);
    m_pDetail->setHeaderLabels({"Field"_q, "Value"_q});
    m_pDetail->setProperty("dense", true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setIndentation(12);
    m_pDetail->setColumnWidth(0, kFieldWidth);
    m_pDetail->setAccessibleName("Details"_q);
    m_pDetail->setMinimumHeight(4 * kRowHeight);
    auto* texts = new QVBoxLayout;
    texts->addLayout(m_pStrip);
    texts->addWidget(m_pSentence);
    texts->addStretch(1);
    auto* head = new QHBoxLayout;
    head->addLayout(texts, 1);
    head->addWidget(m_pPicture, 0, Qt::AlignTop);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_pAsk);
    buttons->addWidget(m_pForget);
    buttons->addWidget(NewButton("WhyCopy", "Copy answer"_q, &CWhyPage::CopyAnswer));
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(answer);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addLayout(buttons);
    layout->addWidget(m_pMessage);
    layout->addWidget(m_pDetail, 1);
    return answer;
}

// ---- subjects

// Keys are unique. Their first letter is the kind.
std::vector<CWhyPage::Subject> CWhyPage::Subjects() const {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    std::set<AdSlot> slots = m_positions;
    slots.insert(kBottomPopup);
    for (const auto& [slot, ad] : m_tracker.Ads()) {
        slots.insert(slot);
    }
    std::vector<Subject> subjects;
    for (const AdSlot& slot : slots) {
        const QString name = "%1 %2"_q.arg(log_table::AdKind(slot.type)).arg(slot.position);
        subjects.push_back({"a%1/%2"_q.arg(slot.type).arg(slot.position), EnKind::Ad,
                            slot.type * 10'000 + slot.position, name,
                            slot == kBottomPopup ? "bottom popup"_q : QString(), slot});
    }
    for (const EntryPage& page : kEntryPages) {
        subjects.push_back({"c%1"_q.arg(page.scene),
                            EnKind::Scene,
                            page.scene,
                            "Chat scene %1"_q.arg(page.scene),
                            QString::fromUtf8(page.title),
                            {}});
    }
    for (const ChatOpen& open : m_tracker.Opens()) {
        subjects.push_back({"o%1"_q.arg(open.timeMs),
                            EnKind::Open,
                            int(&open - &m_tracker.Opens().front()),
                            "Chat open"_q,
                            "%1, page scene %2"_q.arg(log_table::Clock(open.timeMs, now)).arg(open.scene),
                            {}});
    }
    subjects.push_back({"v"_q, EnKind::Vip, 0, "VIP status"_q, QString(), {}});
    subjects.push_back({"r"_q, EnKind::Refresh, 0, "Rights"_q, "refresh of all rights"_q, {}});
    for (const int right : ListedRights()) {
        const QString title = m_rights.Table().value(EnPremiumAccess(right)).strMainTitle;
        subjects.push_back({"r%1"_q.arg(right),
                            EnKind::Right,
                            right,
                            "Right %1"_q.arg(right),
                            "%1  %2"_q.arg(right_text::Name(m_decoder, right), title).trimmed(),
                            {}});
    }
    return subjects;
}

// Rights that the server's answer does not name are listed while the search names them.
std::set<int> CWhyPage::ListedRights() const {
    std::set<int> rights;
    const auto& table = m_rights.Table();
    for (auto right = table.keyBegin(); right != table.keyEnd(); ++right) {
        rights.insert(*right);
    }
    const QString search = m_pSearch->text().simplified();
    const int wanted = search.toInt();
    if (wanted > 0) {
        rights.insert(wanted);
    }
    for (const auto& [number, name] : m_rightNames) {
        if (search.size() > 2 && name.contains(search, Qt::CaseInsensitive)) {
            rights.insert(number);
        }
    }
    return rights;
}

Explanation CWhyPage::Explain(const Subject& subject) const {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    switch (subject.kind) {
        case EnKind::Ad:
            return explanation::OfAd(m_tracker, subject.slot, now);
        case EnKind::Refresh:
            return explanation::OfRefresh(m_tracker, now);
        case EnKind::Vip:
            return explanation::OfVip(m_tracker, m_rights, now);
        case EnKind::Scene:
            return explanation::OfScene(m_tracker, m_entries, ZRAIChatEntryScene(subject.number), now);
        case EnKind::Right:
            return explanation::OfRight(m_tracker, m_rights, EnPremiumAccess(subject.number), now);
        case EnKind::Open:
            break;
    }
    return size_t(subject.number) < m_tracker.Opens().size()
               ? explanation::OfOpen(m_tracker.Opens()[size_t(subject.number)])
               : Explanation();
}

bool CWhyPage::CanAsk(const Subject& subject) {
    return subject.kind == EnKind::Ad ? subject.slot == kBottomPopup || subject.slot.type == kTypeBanner
                                      : subject.kind != EnKind::Scene && subject.kind != EnKind::Open;
}

QString CWhyPage::UserText() const {
    const quint64 user = m_tracker.User();
    const auto name = m_users.find(user);
    const QString text = user == 0               ? QString()
                         : name == m_users.end() ? QString::number(user)
                                                 : "%1 %2"_q.arg(name->second).arg(user);
    return m_tracker.IsLoggedOut() ? text + " (logged out)"_q : text;
}

const CWhyPage::Subject* CWhyPage::Chosen() const {
    const QModelIndexList rows = m_pTable->selectionModel()->selectedRows();
    const auto found = rows.isEmpty() ? m_subjects.end() : m_subjects.find(rows.first().data(kKeyRole).toString());
    return found == m_subjects.end() ? nullptr : &found->second;
}

// ---- display

void CWhyPage::UpdateLater() {
    if (!m_batch.isActive()) {
        m_batch.start();
    }
}

void CWhyPage::Update() {
    m_subjects.clear();
    for (const Subject& subject : Subjects()) {
        m_subjects.emplace(subject.key, subject);
    }
    const bool isFirst = m_rows.isEmpty();
    for (auto row = m_rows.begin(); row != m_rows.end();) {
        if (m_subjects.count(row.key()) == 0) {
            m_pModel->removeRow(row.value()->row());
            row = m_rows.erase(row);
        } else {
            ++row;
        }
    }
    const int before = m_rows.size();
    for (const auto& [key, subject] : m_subjects) {
        ShowRow(subject);
    }
    static_cast<CSubjectFilter*>(m_pFilter)->Set(m_pSearch->text(), m_pKind->currentData().toString());
    if (isFirst || m_rows.size() != before) {
        widgets::FitColumns(*m_pTable);
    }
    m_pNothing->setVisible(m_pFilter->rowCount() == 0);
    m_pNothing->setText(m_pSearch->text().isEmpty() ? "Nothing of this kind was seen yet"_q
                                                    : "Nothing matches \u201C%1\u201D"_q.arg(m_pSearch->text()));
    const QString offset = time_text::ServerOffset();
    m_pClock->setText(
        "Times are in the zone %1."_q.arg(time_text::Zone()) +
        (offset.isEmpty() ? QString() : " The server's clock, which windows and intervals use: %1."_q.arg(offset)));
    ShowAnswer();
}

void CWhyPage::ShowRow(const Subject& subject) {
    const QString& key = subject.key;
    QStandardItem*& first = m_rows[key];
    if (!first) {
        QList<QStandardItem*> items;
        for (int column = 0; column < kColumns.size(); ++column) {
            items << new QStandardItem;
            items.last()->setData(key, kKeyRole);
        }
        first = items.first();
        m_pModel->appendRow(items);
        first->setData(
            int(subject.kind) * 1'000'000 + subject.slot.type * 10'000 + subject.slot.position + subject.number,
            kSortRole);
    }
    const Explanation explained = Explain(subject);
    const QString texts[] = {subject.name, subject.title, explained.state, explained.counts, UserText()};
    for (int column = 0; column < kColumns.size(); ++column) {
        QStandardItem* item = m_pModel->item(first->row(), column);
        if (item->text() != texts[column]) {
            item->setText(texts[column]);
            item->setToolTip(host::kit::TipText(texts[column]));
            if (column != kColumnSubject) {
                item->setData(texts[column], kSortRole);
            }
        }
    }
}

void CWhyPage::ShowStrip(const std::vector<StripStep>& strip) {
    while (m_pStrip->count() > int(strip.size())) {
        QLayoutItem* item = m_pStrip->takeAt(m_pStrip->count() - 1);
        delete item->widget();
        delete item;
    }
    for (size_t index = 0; index < strip.size(); ++index) {
        auto* label =
            index < size_t(m_pStrip->count()) ? qobject_cast<QLabel*>(m_pStrip->itemAt(int(index))->widget()) : nullptr;
        if (!label) {
            label = new QLabel(this);
            label->setTextFormat(Qt::PlainText);
            m_pStrip->insertWidget(int(index), label);
        }
        static const char* const kMarks[] = {"\u2713 ", "\u2026 ", "\u2717 ", "\u2013 "};
        const StripStep& step = strip[index];
        label->setObjectName("WhyStep%1"_q.arg(index));
        label->setText(QString::fromUtf8(kMarks[int(step.state)]) + step.name);
        label->setProperty("role", "muted"_q);
        label->setProperty("good", step.state == StripStep::EnState::Done      ? QVariant(true)
                                   : step.state == StripStep::EnState::Stopped ? QVariant(false)
                                                                               : QVariant());
        theme::Repolish(label);
    }
}

void CWhyPage::ShowSentence() {
    const Subject* subject = Chosen();
    if (!subject) {
        ShowStrip({});
        m_pSentence->setText("Choose a row to see why it is not shown."_q);
        return;
    }
    const Explanation explained = Explain(*subject);
    ShowStrip(explained.strip);
    m_pSentence->setText(explained.sentence);
}

void CWhyPage::ShowAnswer() {
    ShowSentence();
    const Subject* subject = Chosen();
    const Explanation explained = subject ? Explain(*subject) : Explanation();
    m_pAsk->setEnabled(subject && CanAsk(*subject));
    const bool isAskedAtLogin = subject && !CanAsk(*subject);
    m_pAsk->setToolTip(isAskedAtLogin ? "The module asks for this at a login only"_q : QString());
    m_pForget->setEnabled(subject && subject->kind == EnKind::Ad && subject->slot == kBottomPopup);
    // A hidden page must load nothing.
    // A picture that the module loads, or that failed, is not requested once more.
    const bool isPending = explained.strip.size() > log_table::kStepPicture &&
                           explained.strip[log_table::kStepConditions].state == StripStep::EnState::Done &&
                           explained.strip[log_table::kStepPicture].state != StripStep::EnState::Done;
    if (explained.image != m_strPicture && isVisible() && !isPending) {
        m_strPicture = explained.image;
        m_pPicture->SetUrl(m_strPicture, QString());
    }
    m_pPicture->setVisible(!m_strPicture.isEmpty());
    const bool isSame = m_details.size() == explained.details.size() &&
                        std::equal(m_details.begin(), m_details.end(), explained.details.begin(),
                                   [](const Detail& left, const Detail& right) { return left == right; });
    if (isSame) {
        return;
    }
    m_details = explained.details;
    const int scrolled = m_pDetail->verticalScrollBar()->value();
    m_pDetail->clear();
    for (const Detail& detail : m_details) {
        AddDetail(m_pDetail->invisibleRootItem(), detail);
    }
    m_pDetail->expandAll();
    m_pDetail->verticalScrollBar()->setValue(scrolled);
}

void CWhyPage::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setVisible(!words.isEmpty());
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}

// ---- actions

void CWhyPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowAnswer();
    AskPositions();
}

void CWhyPage::ShowUsers(const std::vector<ServerUser>& users) {
    m_users.clear();
    for (const ServerUser& user : users) {
        m_users[user.id] = user.name;
    }
    UpdateLater();
}

void CWhyPage::ForgetServer() {
    m_positions.clear();
    AskPositions();
}

void CWhyPage::AskPositions() {
    m_server.Ask("GET", "/v1/scenario"_q, QByteArray(), this,
                 [this](const ServerAnswer& answer) { OnPositions(answer); });
}

void CWhyPage::OnPositions(const ServerAnswer& answer) {
    constexpr std::string_view kAds = "ads";
    const Json::Value* ads = answer.error.isEmpty() && answer.body.isObject()
                                 ? answer.body.find(kAds.data(), kAds.data() + kAds.size())
                                 : nullptr;
    if (!ads || !ads->isArray()) {
        return;
    }
    m_positions.clear();
    for (const Json::Value& ad : *ads) {
        const Json::Value type = ad.isObject() ? ad.get("adType", Json::Value()) : Json::Value();
        const Json::Value position = ad.isObject() ? ad.get("adPosition", Json::Value()) : Json::Value();
        if (type.isInt() && position.isInt()) {
            m_positions.insert({type.asInt(), position.asInt()});
        }
    }
    UpdateLater();
}

void CWhyPage::Push(const char* json) {
    m_server.Ask("POST", "/v1/push"_q, QByteArray(json), this, [this](const ServerAnswer& answer) {
        Say(answer.error.isEmpty() ? "Asked by a push of the server"_q : answer.error, answer.error.isEmpty());
    });
}

void CWhyPage::AskNow() {
    const Subject* subject = Chosen();
    if (!subject) {
        return;
    }
    switch (subject->kind) {
        case EnKind::Ad:
            if (subject->slot == kBottomPopup) {
                Push(R"({"adNew":{"adType":2,"adPosition":42,"delay":0}})");
                return;
            }
            Say("Asked. The banner is shown here when it comes."_q, true);
            CAds::AskBanner(subject->slot.position, kBannerSize, [page = QPointer<CWhyPage>(this)](QWidget* banner) {
                if (page) {
                    page->ShowBanner(banner);
                } else {
                    delete banner;
                }
            });
            return;
        case EnKind::Vip:
            Push(R"({"vipChange":{"windowSeconds":0}})");
            return;
        default: {
            const unsigned long session = subject->kind == EnKind::Refresh
                                              ? CPremiumRights::AskAll(true)
                                              : CPremiumRights::AskList({subject->number}, true);
            Say(session != 0 ? "Asked, session %1"_q.arg(session)
                             : "Nobody was asked: the module is not there or has not started"_q,
                session != 0);
        }
    }
}

void CWhyPage::ForgetAndAsk() {
    for (int type = 0; type < kIntervalTypes; ++type) {
        const std::string key = LastShownKey(m_tracker.User(), type);
        long shown = 0;
        if (core::config_local::AppCfgReadInt64(key, shown) && shown != 0 &&
            !core::config_local::AppCfgSaveInt64(key, 0)) {
            Say("The store did not take the change"_q, false);
            return;
        }
    }
    AskNow();
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

void CWhyPage::CopyAnswer() {
    if (const Subject* subject = Chosen()) {
        QApplication::clipboard()->setText(
            "%1, user %2\n%3"_q.arg(subject->name, UserText(), Explain(*subject).ToText()));
        Say("Copied"_q, true);
    }
}

QJsonObject CWhyPage::State() const {
    QJsonArray subjects;
    for (const auto& [key, subject] : m_subjects) {
        QJsonObject object = Explain(subject).ToJson();
        object.insert("subject"_q, subject.name);
        object.insert("name"_q, subject.title);
        object.insert("user"_q, UserText());
        subjects.append(object);
    }
    return {{"subjects"_q, subjects}};
}
