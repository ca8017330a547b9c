#include "workbench/Widgets.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVariant>
#include <algorithm>

#include "Theme.h"

namespace widgets {
namespace {

constexpr int kRowHeight = 24;
constexpr int kMaxColumnWidth = 220;

QBoxLayout* Filled(QBoxLayout* layout, const std::vector<Part>& parts) {
    layout->setContentsMargins(0, 0, 0, 0);
    for (const Part& part : parts) {
        if (part.widget) {
            layout->addWidget(part.widget, part.stretch);
        } else if (part.layout) {
            layout->addLayout(part.layout);
        } else {
            layout->addStretch(part.stretch);
        }
    }
    return layout;
}

void CopyRows(const QTableView& table) {
    QModelIndexList cells = table.selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (const QModelIndex& cell : qAsConst(cells)) {
        const QChar separator = QLatin1Char(cell.column() == 0 ? '\n' : '\t');
        text += separator + cell.data().toString();
    }
    QApplication::clipboard()->setText(text.mid(1));
}

}  // namespace

QLabel* NewLabel(const QString& name, const char* role, QWidget* parent, const QString& text) {
    auto* label = New<QLabel>(name, parent);
    label->setProperty("role", QString::fromLatin1(role));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(text);
    return label;
}

QLabel* NewOutcome(const QString& name, QWidget* parent) {
    auto* line = NewLabel(name, "", parent);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return line;
}

void ShowOutcome(QLabel* line, const QString& text, EnOutcome outcome) {
    line->setText(text);
    line->setProperty("good", outcome == EnOutcome::Unsaved ? QVariant() : QVariant(outcome == EnOutcome::Good));
    line->setProperty("role", outcome == EnOutcome::Unsaved ? "overridden"_q : QString());
    theme::Repolish(line);
}

QPushButton* NewButton(const QString& name, const QString& text, QWidget* parent, std::function<void()> action) {
    auto* button = New<QPushButton>(name, parent);
    button->setText(text);
    QObject::connect(button, &QPushButton::clicked, parent, std::move(action));
    return button;
}

QPushButton* NewFileButton(const QString& name, QLineEdit* path) {
    return NewButton(name, "Choose file"_q, path->parentWidget(), [path] {
        const QString file = QFileDialog::getSaveFileName(path->window(), "Choose the file"_q, path->text(), "*.json"_q,
                                                          nullptr, QFileDialog::DontConfirmOverwrite);
        path->setText(file.isEmpty() ? path->text() : file);
    });
}

QComboBox* NewCombo(const QString& name, const QString& accessibleName, const Choices& choices, QWidget* parent,
                    const std::function<void(const QVariant& value)>& changed) {
    auto* combo = New<QComboBox>(name, parent, accessibleName);
    for (const auto& [value, text] : choices) {
        combo->addItem(text, value);
    }
    QObject::connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), parent,
                     [combo, changed] { changed(combo->currentData()); });
    return combo;
}

void Select(QComboBox* combo, const QVariant& value) {
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(std::max(0, combo->findData(value)));
}

void ShowUsers(QComboBox* combo, const std::vector<ServerUser>& users, const QVariant& chosen) {
    const QSignalBlocker blocker(combo);
    combo->clear();
    for (const ServerUser& user : users) {
        combo->addItem("%1  %2"_q.arg(user.name).arg(user.id), user.id);
    }
    Select(combo, chosen);
}

QString UserText(const std::vector<ServerUser>& users, quint64 id) {
    const auto user = std::find_if(users.begin(), users.end(), [id](const ServerUser& one) { return one.id == id; });
    return user == users.end() ? QString::number(id) : "%1 (%2)"_q.arg(user->name).arg(id);
}

QBoxLayout* Row(const std::vector<Part>& parts, QWidget* parent) {
    return Filled(new QHBoxLayout(parent), parts);
}

QBoxLayout* Column(const std::vector<Part>& parts, QWidget* parent) {
    return Filled(new QVBoxLayout(parent), parts);
}

QWidget* PagesOf(QTabWidget* tabs) {
    return tabs->findChild<QStackedWidget*>({}, Qt::FindDirectChildrenOnly);
}

void AddScrollTab(QTabWidget* tabs, QWidget* page, const QString& title) {
    auto* area = New<QScrollArea>(page->objectName() + "Scroll"_q, PagesOf(tabs));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    // The background behind the area shows through.
    page->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    tabs->addTab(area, title);
}

void SetUpTable(QTableView& table) {
    table.setProperty("dense", true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setFrameShape(QFrame::NoFrame);
    table.setTabKeyNavigation(false);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(kRowHeight);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table.horizontalHeader()->setStretchLastSection(true);
    auto* copy = new QAction(QStringLiteral("Copy rows"), &table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(copy, &QAction::triggered, &table, [&table] { CopyRows(table); });
    table.addAction(copy);
    table.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FitColumns(QTableView& table) {
    const QHeaderView& header = *table.horizontalHeader();
    for (int column = 0; column < header.count() - 1; ++column) {
        table.resizeColumnToContents(column);
        table.setColumnWidth(column, std::min(header.sectionSize(column), kMaxColumnWidth));
    }
}

}  // namespace widgets
