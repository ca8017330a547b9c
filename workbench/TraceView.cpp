#include "workbench/TraceView.h"

#include <QTreeWidget>
#include <QVariant>

namespace {

void AddFields(QTreeWidgetItem* parent, const std::vector<FieldNode>& fields) {
    for (const FieldNode& field : fields) {
        auto* item = new QTreeWidgetItem(parent, {field.name, field.value});
        item->setToolTip(1, field.value);
        AddFields(item, field.children);
    }
}

}  // namespace

CTraceView::CTraceView(std::unique_ptr<ITraceFormat> format, QWidget* parent)
    : CEntryView(format->Name(), parent),
      m_model(std::move(format), this),
      m_filter(m_model),
      m_pKind(NewChoice("Kind", [this](const QVariant& item) { m_filter.SetKind(item.toInt()); })),
      m_pDetail(New<QTreeWidget>("Detail")) {
    constexpr int kFieldWidth = 220;
    m_pDetail->setColumnCount(2);
    m_pDetail->setProperty("dense", true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setColumnWidth(0, kFieldWidth);
    m_pDetail->setSelectionMode(QAbstractItemView::SingleSelection);
    SetUp(m_model, m_filter, m_model.Format().Widths(), {m_pKind}, m_pDetail);
    m_pKind->addItem(QStringLiteral("All kinds"), -1);
    for (const QString& kind : m_model.Format().Kinds()) {
        m_pKind->addItem(kind, m_pKind->count() - 1);
    }
}

void CTraceView::ShowChoices() {
    const std::vector<QString> kinds = m_model.Format().Kinds();
    for (int index = 0; index < m_pKind->count(); ++index) {
        m_pKind->setItemText(index, index == 0 ? QStringLiteral("All kinds") : kinds[size_t(index) - 1]);
    }
    m_pDetail->setHeaderLabels({QStringLiteral("Field"), QStringLiteral("Value")});
}

void CTraceView::ShowDetail(int row) {
    m_pDetail->clear();
    if (row >= 0) {
        AddFields(m_pDetail->invisibleRootItem(), m_model.Format().Detail(m_model.At(row)));
        m_pDetail->expandAll();
    }
}
