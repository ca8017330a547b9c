#pragma once

#include <json/value.h>

#include "Vip/View/ZRVipBaseWidget.h"

class QLabel;

/// A badge with the user's VIP grade, or with the name of the membership in the display language. A click opens the
/// membership centre. Main thread.
class CZRVipTagWidget : public CZRVipBaseWidget {
    Q_OBJECT

public:
    CZRVipTagWidget(EnPremiumAccess access, ZRVipTagType tagType, QString pageId, QWidget* parent);
    ~CZRVipTagWidget() override;

    static bool IsVipTagEnabled(EnPremiumAccess access);

    /// Returns the image for a grade. Empty for grade 0; a grade without an image raises an assertion and returns
    /// empty.
    static QString GetTagImageName(ZRVipTagType tagType, ZRVipGrade grade);
    static QSize GetTagImageSize(ZRVipTagType tagType);

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override;

protected:
    void ReportExposeStart() override;
    void ReportExposeEnd() override;
    void RefreshUI() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    Json::Value ReportParams() const;
    void ReportClick();

    QLabel* m_pLabel;
    ZRVipTagType m_enTagType;
};
