#pragma once

#include <QAbstractTableModel>
#include <QMap>

#include "modules/ZRPremiumRecords.h"

class CPremiumRights;
class CWireDecoder;

/// The table of rights, sorted by number. Both arguments must outlive it. Main thread.
class CRightsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum EnColumn { Number, Name, Permission, Activation, DaysLeft, Source, UiType, MainTitle, ColumnCount };

    CRightsModel(const CPremiumRights& rights, const CWireDecoder& decoder, QObject* parent = nullptr);

    EnPremiumAccess At(int row) const { return m_rights[row]; }
    /// -1 if the right is not in the table.
    int RowOf(EnPremiumAccess right) const { return m_rights.indexOf(right); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void Take();
    void Repaint();
    QString TextAt(EnPremiumAccess right, int column) const;

    const CPremiumRights& m_source;
    const CWireDecoder& m_decoder;
    QMap<EnPremiumAccess, CPremiumUIAccessData> m_table;
    QList<EnPremiumAccess> m_rights;
};
