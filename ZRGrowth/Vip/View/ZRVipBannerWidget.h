#pragma once

#include <QPointer>

#include "Vip/View/ZRVipBaseWidget.h"

class QFrame;
class QLabel;
class ZButton;
class ZMultilineTextLabel;

/// Shows the membership icon, a text, the days left and a button for a right.
/// Main thread.
class CZRVipBannerWidget : public CZRVipBaseWidget {
    Q_OBJECT

public:
    CZRVipBannerWidget(EnPremiumAccess access, ZRVipUIDataType dataType, QString pageId, QWidget* parent);
    ~CZRVipBannerWidget() override;

    static bool IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType);

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override;

Q_SIGNALS:
    void ActionButtonClicked(EnPremiumAccess access, ZRVipUIDataType dataType, QPointer<QWidget> activeVipPopupParent);

protected Q_SLOTS:
    void OnActionButtonClicked();

protected:
    void RefreshUI() override;

private:
    void InitUI();
    void ShowTitle(const QString& title);
    void ReportClick();

    QLabel* m_pIconLabel = nullptr;
    QWidget* m_pIconSpacer = nullptr;
    QFrame* m_pSeparator = nullptr;
    QWidget* m_pSeparatorSpacer = nullptr;
    ZMultilineTextLabel* m_pTextLabel = nullptr;
    ZButton* m_pActionButton = nullptr;
    int m_nPageStatus = 0;
    ZRVipUIDataType m_enDataType;
    int m_nDaysLeft = -1;
};
