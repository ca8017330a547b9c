#include "VipGallery.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <array>

#include "PremiumRights.h"
#include "RightStates.h"
#include "Theme.h"
#include "Translation.h"
#include "VipSlot.h"

namespace {

constexpr QSize kSize(1440, 860);
const QString kName = QStringLiteral("VipGallery");
constexpr const char* kPageId = "gallery";
constexpr int kRowsInFirstFrame = 8;
constexpr qint64 kSliceMs = 8;

// Places in the cell of a right and a text set.
constexpr QRect kLockedPlace(0, 0, 170, 112);
constexpr QRect kBannerPlace(178, 0, 290, 44);
constexpr QRect kCompactPlace(178, 48, 290, 64);
constexpr QRect kExclusivePlace(476, 0, 170, 64);
constexpr QRect kMarksPlace(476, 80, 170, 16);
constexpr QSize kCellSize(646, 112);
constexpr int kTitleWidth = 150;
constexpr int kCellSpacing = 16;

constexpr ZRVipUIDataType kTextSets[] = {ZRVipUIDataMain, ZRVipUIDataDetail, ZRVipUIDataDetailSub};
constexpr const char* kTextSetNames[] = {QT_TRANSLATE_NOOP("CVipGallery", "Main texts"),
                                         QT_TRANSLATE_NOOP("CVipGallery", "Detail texts"),
                                         QT_TRANSLATE_NOOP("CVipGallery", "Detail sub texts")};

constexpr int kDays[] = {0, 1, 5, 12, 365};
constexpr const char* kLetters = "ABD";

struct NumberRange {
    int first;
    int last;
};
constexpr NumberRange kRightRanges[] = {{1, 8},     {11, 29},   {74, 74},   {99, 99},
                                        {101, 111}, {114, 115}, {201, 203}, {1000, 1000}};

std::vector<EnPremiumAccess> AllRights() {
    std::vector<EnPremiumAccess> rights;
    for (const NumberRange& range : kRightRanges) {
        for (int number = range.first; number <= range.last; ++number) {
            rights.push_back(EnPremiumAccess(number));
        }
    }
    return rights;
}

/// The content behind a mask.
class CBackdrop : public QWidget {
public:
    CBackdrop(const QRect& place, QWidget* parent) : QWidget(parent) { setGeometry(place); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr int kStep = 16;
        constexpr std::array<theme::ColorName, 3> kColors{theme::kUp, theme::kDown, theme::kMuted};
        QPainter painter(this);
        for (int line = 0; line * kStep < height(); ++line) {
            const int length = width() * (3 + line * 5 % 7) / 12;
            painter.fillRect(8, line * kStep + 5, length, 6, QColor(kColors[size_t(line) % kColors.size()]));
        }
    }
};

QWidget* NewCell(EnPremiumAccess right, ZRVipUIDataType texts, const CPremiumRights& rights, QWidget* row) {
    auto* cell = new QWidget(row);
    cell->setFixedSize(kCellSize);
    const auto addMask = [&](EnVipKind kind, const QRect& place) {
        new CVipSlot({kind, right, texts, kPageId}, rights, cell, new CBackdrop(place, cell));
    };
    addMask(EnVipKind::MaskLocked, kLockedPlace);
    addMask(EnVipKind::MaskCompact, kCompactPlace);
    addMask(EnVipKind::MaskExclusive, kExclusivePlace);
    (new CVipSlot({EnVipKind::Banner, right, texts, kPageId}, rights, cell))->setGeometry(kBannerPlace);
    auto* marks = new QWidget(cell);
    marks->setGeometry(kMarksPlace);
    auto* layout = new QHBoxLayout(marks);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const EnVipKind kind : {EnVipKind::Icon, EnVipKind::TagGrade, EnVipKind::TagName}) {
        layout->addWidget(new CVipSlot({kind, right, texts, kPageId}, rights, marks));
    }
    layout->addStretch(1);
    return cell;
}

QWidget* NewTitle(EnPremiumAccess right, const CPremiumRights& rights, QWidget* row) {
    auto* title = new QLabel(row);
    title->setFixedWidth(kTitleWidth);
    title->setWordWrap(true);
    title->setTextFormat(Qt::PlainText);
    const auto show = [title, right, &rights] {
        const CPremiumUIAccessData record = rights.Table().value(right);
        title->setText(QStringLiteral("%1\n%2").arg(
            QString::number(right),
            record.strMainTitle.isEmpty() ? CVipGallery::tr("The user has no record") : record.strMainTitle));
    };
    QObject::connect(&rights, &CPremiumRights::Changed, title, show);
    show();
    return title;
}

QWidget* NewHeader(QWidget* parent) {
    auto* header = new QWidget(parent);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kCellSpacing);
    layout->addSpacing(kTitleWidth + kCellSpacing);
    for (const char* name : kTextSetNames) {
        auto* label = new QLabel(header);
        label->setProperty("role", QStringLiteral("section"));
        label->setFixedWidth(kCellSize.width());
        translation::OnLanguageChange(label, [label, name] { label->setText(CVipGallery::tr(name)); });
        layout->addWidget(label);
    }
    layout->addStretch(1);
    return header;
}

}  // namespace

int CVipGallery::RowCount() {
    static const int kCount = int(AllRights().size());
    return kCount;
}

CVipGallery::CVipGallery(QWidget* mainWindow, CPremiumRights& rights)
    : QWidget(mainWindow, Qt::Window),
      m_rights(rights),
      m_pScroll(new QScrollArea(this)),
      m_pContent(new QWidget(this)),
      m_pRows(new QVBoxLayout(m_pContent)),
      m_firstPaint(*this, [this] { AddSlice(); }) {
    setObjectName(kName);
    setAttribute(Qt::WA_DeleteOnClose);
    // Connected before the slots are, which show the replaced values.
    connect(&rights, &CPremiumRights::Changed, this, [this] { m_override.Apply(); });
    m_pContent->setObjectName(QStringLiteral("VipGalleryContent"));
    m_pRows->setSpacing(8);
    m_pRows->setSizeConstraint(QLayout::SetFixedSize);
    m_pRows->addWidget(NewHeader(m_pContent));
    for (int row = 0; row < kRowsInFirstFrame; ++row) {
        AddRow();
    }
    m_pScroll->setFrameShape(QFrame::NoFrame);
    m_pScroll->setFocusPolicy(Qt::NoFocus);  // the focus scrolls its control into view
    m_pScroll->setWidget(m_pContent);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(NewSwitches());
    layout->addWidget(m_pScroll, 1);
    translation::OnLanguageChange(this, [this] { ShowSwitchTexts(); });
    for (QComboBox* box : {m_pType, m_pDays, m_pLetter}) {
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &CVipGallery::ApplySwitches);
    }
    resize(kSize.boundedTo(mainWindow->screen()->availableSize()));
}

void CVipGallery::Open(QWidget* mainWindow, CPremiumRights& rights) {
    auto* window = mainWindow->findChild<QWidget*>(kName, Qt::FindDirectChildrenOnly);
    if (!window) {
        window = new CVipGallery(mainWindow, rights);
    }
    window->show();
    window->raise();
    window->activateWindow();
}

QComboBox* CVipGallery::NewSwitch(const char* name, QGridLayout* grid, const char* title) {
    auto* label = new QLabel(this);
    translation::OnLanguageChange(label, [label, title] { label->setText(tr(title)); });
    auto* box = new QComboBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    label->setBuddy(box);
    box->addItem(QString());
    const int column = grid->columnCount();
    grid->addWidget(label, 0, column);
    grid->addWidget(box, 0, column + 1);
    return box;
}

QGridLayout* CVipGallery::NewSwitches() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    m_pType = NewSwitch("GalleryType", grid, QT_TR_NOOP("Activation type"));
    for (int type = 0; type < right_states::kCount; ++type) {
        m_pType->addItem(QString(), type);
    }
    m_pDays = NewSwitch("GalleryDays", grid, QT_TR_NOOP("Days left"));
    for (const int days : kDays) {
        m_pDays->addItem(QString::number(days), days);
    }
    m_pLetter = NewSwitch("GalleryLetter", grid, QT_TR_NOOP("Layout letter"));
    const QString letters = QString::fromLatin1(kLetters);
    for (const QChar letter : letters) {
        m_pLetter->addItem(letter, QString(letter));
    }
    grid->setColumnStretch(grid->columnCount(), 1);
    return grid;
}

void CVipGallery::ShowSwitchTexts() {
    setWindowTitle(tr("VIP gallery"));
    for (QComboBox* box : {m_pType, m_pDays, m_pLetter}) {
        box->setItemText(0, tr("As the server sent it"));
    }
    for (int type = 0; type < right_states::kCount; ++type) {
        m_pType->setItemText(type + 1, QStringLiteral("%1  %2").arg(type).arg(right_states::Name(type)));
    }
}

void CVipGallery::ApplySwitches() {
    const auto number = [](const QComboBox* box) {
        const QVariant chosen = box->currentData();
        return chosen.isValid() ? std::optional<int>(chosen.toInt()) : std::nullopt;
    };
    const QVariant letter = m_pLetter->currentData();
    m_override.Set({number(m_pType), number(m_pDays),
                    letter.isValid() ? std::optional<QString>(letter.toString()) : std::nullopt});
    m_rights.Refresh();
}

void CVipGallery::AddRow() {
    static const std::vector<EnPremiumAccess> kRights = AllRights();
    const EnPremiumAccess right = kRights[size_t(m_nNextRow)];
    auto* row = new QWidget(m_pContent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kCellSpacing);
    layout->addWidget(NewTitle(right, m_rights, row));
    for (const ZRVipUIDataType texts : kTextSets) {
        layout->addWidget(NewCell(right, texts, m_rights, row));
    }
    m_pRows->addWidget(row);
    ++m_nNextRow;
}

void CVipGallery::AddSlice() {
    QElapsedTimer running;
    running.start();
    while (m_pContent && !IsComplete() && running.elapsed() < kSliceMs) {
        AddRow();
    }
    if (IsComplete()) {
        Q_EMIT Completed();
    } else if (m_pContent) {
        // A timer instead of a posted event, so that pending user input is handled first.
        QTimer::singleShot(0, this, &CVipGallery::AddSlice);
    }
}

void CVipGallery::closeEvent(QCloseEvent* event) {
    // Deleted while they are visible, the widgets report no exposures.
    delete m_pContent;
    m_override.Set({});
    m_rights.Refresh();
    QWidget::closeEvent(event);
}
