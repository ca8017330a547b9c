#include "workbench/rights/RightsModel.h"

#include <QColor>

#include "PremiumRights.h"
#include "Theme.h"
#include "ui/KitPaint.h"
#include "workbench/rights/RightText.h"

namespace {

constexpr const char* kTitles[] = {
    "No.", "Name", "Held", "Activation", "Days", "Source", "UI", "Main title",
};

}  // namespace

CRightsModel::CRightsModel(const CPremiumRights& rights, const CWireDecoder& decoder, QObject* parent)
    : QAbstractTableModel(parent), m_source(rights), m_decoder(decoder) {
    Take();
    connect(&rights, &CPremiumRights::Changed, this, &CRightsModel::Take);
    theme::OnThemeChange(this, [this] { Repaint(); });
}

// If only the records change, rows and selection are kept.
void CRightsModel::Take() {
    const QList<EnPremiumAccess> rights = m_source.Table().keys();
    if (rights == m_rights) {
        m_table = m_source.Table();
        Repaint();
        return;
    }
    beginResetModel();
    m_table = m_source.Table();
    m_rights = rights;
    endResetModel();
}

void CRightsModel::Repaint() {
    if (!m_rights.isEmpty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    }
}

int CRightsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rights.size();
}

int CRightsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString CRightsModel::TextAt(EnPremiumAccess right, int column) const {
    const CPremiumUIAccessData record = m_table.value(right);
    switch (EnColumn(column)) {
        case Number:
            return QString::number(right);
        case Name:
            return right_text::Name(m_decoder, right);
        case Permission:
            return right_text::YesNo(record.bHasPermission);
        case Activation:
            return right_text::Activation(record.nActivationType, right_text::EnForm::Word);
        case DaysLeft:
            return QString::number(record.nDaysLeft);
        case Source:
            return right_text::Source(record.nActivationSource, right_text::EnForm::Word);
        case UiType:
            return record.strUIType;
        case MainTitle:
            return record.strMainTitle;
        case ColumnCount:
            break;
    }
    return QString();
}

QVariant CRightsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    const EnPremiumAccess right = m_rights[index.row()];
    if (role == Qt::DisplayRole) {
        return TextAt(right, index.column());
    }
    if (role == Qt::ToolTipRole) {
        return host::kit::TipText(TextAt(right, index.column()));
    }
    if (role == Qt::ForegroundRole) {
        const bool has = m_table.value(right).bHasPermission;
        const bool tells = index.column() == Permission && has;
        return QColor(tells ? theme::kUp : has ? theme::kText : theme::kMuted);
    }
    return QVariant();
}

QVariant CRightsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) {
        return QVariant();
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? QString::fromUtf8(kTitles[section]) : QVariant();
}
