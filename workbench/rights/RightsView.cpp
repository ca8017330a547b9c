#include "workbench/rights/RightsView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QVariant>

#include "PremiumRights.h"
#include "workbench/PanelWidgets.h"

namespace {

constexpr int kRowHeight = 22;
constexpr int kRowsInSight = 4;  // minimum
// The last column gets the remaining width.
constexpr int kColumnWidths[] = {40, 128, 50, 84, 44, 88, 26, 60};
constexpr int kNumberWidth = 170;

}  // namespace

CRightsView::CRightsView(const CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent)
    : QWidget(parent),
      m_model(rights, decoder),
      m_pNumber(new QLineEdit(this)),
      m_pCount(new QLabel(this)),
      m_pTable(new QTableView(this)) {
    setObjectName(QStringLiteral("RightsView"));
    SetUpTable();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(NewHead());
    layout->addWidget(m_pTable, 1);
    connect(&rights, &CPremiumRights::Changed, this, [this] {
        SelectChosen();
        ShowCount();
    });
    m_pNumber->setPlaceholderText(QStringLiteral("Right by number"));
    ShowCount();
}

QWidget* CRightsView::NewHead() {
    auto* head = new QWidget(this);
    m_pNumber->setObjectName(QStringLiteral("RightNumber"));
    m_pNumber->setClearButtonEnabled(true);
    m_pNumber->setFixedWidth(kNumberWidth);
    m_pCount->setObjectName(QStringLiteral("RightsCount"));
    m_pCount->setProperty("role", QStringLiteral("muted"));
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pNumber);
    layout->addWidget(m_pCount, 1);
    connect(m_pNumber, &QLineEdit::textEdited, this, &CRightsView::OnTyped);
    return head;
}

void CRightsView::SetUpTable() {
    m_pTable->setObjectName(QStringLiteral("RightsTable"));
    m_pTable->setModel(&m_model);
    panel::SetUpRows(*m_pTable, kRowHeight);
    m_pTable->setMinimumHeight(kRowHeight * (kRowsInSight + 1));
    m_pTable->horizontalHeader()->setMinimumSectionSize(24);
    for (int column = 0; column < CRightsModel::ColumnCount; ++column) {
        m_pTable->setColumnWidth(column, kColumnWidths[column]);
    }
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = m_pTable->selectionModel()->selectedRows();
        if (!m_bSelecting && !rows.isEmpty()) {
            m_pNumber->clear();
            Choose(m_model.At(rows.first().row()));
        }
    });
}

void CRightsView::OnTyped(const QString& text) {
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    if (isNumber) {
        Choose(EnPremiumAccess(number));
    }
}

void CRightsView::Choose(EnPremiumAccess right) {
    m_chosen = right;
    SelectChosen();
    Q_EMIT Chosen(right);
}

void CRightsView::SelectChosen() {
    m_bSelecting = true;
    const int row = m_model.RowOf(m_chosen);
    if (row >= 0) {
        m_pTable->selectRow(row);
    } else {
        m_pTable->clearSelection();
    }
    m_bSelecting = false;
}

void CRightsView::ShowCount() {
    m_pCount->setText(CPremiumRights::HasModule() ? QStringLiteral("Rights in the table: %1").arg(m_model.rowCount())
                                                  : QStringLiteral("Closed, no module"));
}
