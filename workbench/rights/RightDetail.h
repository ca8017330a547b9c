#pragma once

#include <QWidget>

#include "modules/ZRPremiumRecords.h"

class CElidedLabel;
class CPremiumRights;
class CWireDecoder;
class QPlainTextEdit;
class QTreeWidget;

/// All that the service gives out for one right, live, also for one that is not in the table. Both must outlive it.
class CRightDetail : public QWidget {
public:
    CRightDetail(const CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent = nullptr);

    /// 0 shows none.
    void ShowRight(EnPremiumAccess right);

private:
    void Show();

    const CPremiumRights& m_rights;
    const CWireDecoder& m_decoder;
    EnPremiumAccess m_right{};
    CElidedLabel* m_pWhich;
    QTreeWidget* m_pFields;
    QPlainTextEdit* m_pOtherInfo;
};
