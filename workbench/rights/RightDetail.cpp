#include "workbench/rights/RightDetail.h"

#include <QPlainTextEdit>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariant>

#include "ElidedLabel.h"
#include "PremiumRights.h"
#include "ui/KitPaint.h"
#include "workbench/rights/RightText.h"

namespace {

constexpr int kFieldWidth = 124;
constexpr int kLeastHeight = 120;

void AddFields(QTreeWidgetItem* parent, const std::vector<FieldNode>& fields) {
    for (const FieldNode& field : fields) {
        auto* item = new QTreeWidgetItem(parent, {field.name, field.value});
        item->setToolTip(1, host::kit::TipText(field.value));
        item->setFirstColumnSpanned(!field.children.empty());
        AddFields(item, field.children);
    }
}

}  // namespace

CRightDetail::CRightDetail(const CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent)
    : QWidget(parent),
      m_rights(rights),
      m_decoder(decoder),
      m_pWhich(new CElidedLabel(this)),
      m_pFields(new QTreeWidget(this)),
      m_pOtherInfo(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("RightDetail"));
    m_pWhich->setObjectName(QStringLiteral("RightChosen"));
    m_pWhich->setProperty("role", QStringLiteral("muted"));
    m_pWhich->setTextFormat(Qt::PlainText);
    m_pFields->setObjectName(QStringLiteral("RightFields"));
    m_pFields->setColumnCount(2);
    m_pFields->setProperty("dense", true);
    m_pFields->setFrameShape(QFrame::NoFrame);
    m_pFields->setIndentation(12);
    m_pFields->setColumnWidth(0, kFieldWidth);
    m_pFields->setMinimumHeight(kLeastHeight);
    m_pOtherInfo->setObjectName(QStringLiteral("RightOtherInfo"));
    m_pOtherInfo->setReadOnly(true);
    m_pOtherInfo->setFrameShape(QFrame::NoFrame);
    auto* halves = new QSplitter(this);
    halves->setObjectName(QStringLiteral("RightHalves"));
    halves->setHandleWidth(8);
    halves->setChildrenCollapsible(false);
    halves->addWidget(m_pFields);
    halves->addWidget(m_pOtherInfo);
    halves->setStretchFactor(0, 1);
    halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    layout->addWidget(m_pWhich);
    layout->addWidget(halves, 1);
    connect(&rights, &CPremiumRights::Changed, this, &CRightDetail::Show);
    m_pFields->setHeaderLabels({QStringLiteral("Field"), QStringLiteral("Value")});
    m_pOtherInfo->setPlaceholderText(QStringLiteral("No other info"));
    Show();
}

void CRightDetail::ShowRight(EnPremiumAccess right) {
    m_right = right;
    Show();
}

void CRightDetail::Show() {
    m_pFields->clear();
    m_pOtherInfo->clear();
    if (m_right == 0) {
        m_pWhich->SetWhole(QStringLiteral("Choose a right, or type its number"));
        return;
    }
    QString which = QStringLiteral("%1  %2").arg(m_right).arg(right_text::Name(m_decoder, m_right)).trimmed();
    if (!m_rights.Table().contains(m_right)) {
        which += QStringLiteral(" \u00B7 not in the table: a default record");
    }
    m_pWhich->SetWhole(which);
    const CPremiumUIAccessData record = CPremiumRights::Record(m_right);
    AddFields(m_pFields->invisibleRootItem(), right_text::Fields(record));
    m_pFields->expandAll();
    m_pOtherInfo->setPlainText(right_text::Pretty(record.strOtherInfo));
}
