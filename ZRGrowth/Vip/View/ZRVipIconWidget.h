#pragma once

#include "Vip/View/ZRVipBaseWidget.h"

class QLabel;

/// Shows the membership icon of a right. It reports nothing. Main thread.
class CZRVipIconWidget : public CZRVipBaseWidget {
    Q_OBJECT

public:
    CZRVipIconWidget(EnPremiumAccess access, QWidget* parent);
    ~CZRVipIconWidget() override;

    static bool IsVipIconEnabled(EnPremiumAccess access);

    /// Returns the image of the mark, or the icon for use by callers. Empty in the newer VIP system.
    static QString GetIconImageName(bool icon);
    static QSize GetIconImageSize();

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override;

protected:
    void ReportExposeStart() override;
    void ReportExposeEnd() override;
    void RefreshUI() override;

private:
    QLabel* m_pLabel;
};
