#pragma once

#include <QWidget>

#include "modules/ZRPremiumRecords.h"

class CElidedLabel;
class CPremiumRights;
class CWireDecoder;
class QPlainTextEdit;
class QTreeWidget;

/// Shows all values that the service returns for one right, live, also for a right that is not in the table. Both
/// arguments must outlive it.
class CRightDetail : public QWidget {
public:
    CRightDetail(const CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent = nullptr);

    /// 0 clears the detail.
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
