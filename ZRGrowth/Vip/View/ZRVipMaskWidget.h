#pragma once

#include <QPointer>

#include "Vip/View/ZRVipBaseWidget.h"
#include "ui/image_blur.h"

class QLabel;
class QVBoxLayout;
class ZBackgroundBlurWidget;
class ZButton;
class ZMultilineText;
class ZText;

/// The look of a mask's blur.
struct SVipMaskBlur {
    double radiusTheme3;
    double radiusOther;  // of the other themes
    bool popupStyle;
};

/// A mask over content that the user may not see yet: a blur with a text and an action button. Main thread.
class CZRVipLockedMaskWidget : public CZRVipBaseWidget {
    Q_OBJECT

public:
    CZRVipLockedMaskWidget(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType, QString pageId,
                           QWidget* parent, zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                           double blurRadiusTheme3, double blurRadiusOther, bool popupStyle);
    ~CZRVipLockedMaskWidget() override;

    static bool IsVipMaskEnabled(EnPremiumAccess access, ZRVipUIDataType dataType);

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override;
    void ReportClick();

Q_SIGNALS:
    void ActionButtonClicked(EnPremiumAccess access, ZRVipUIDataType dataType, QPointer<QWidget> activeVipPopupParent);

protected Q_SLOTS:
    void OnActionButtonClicked();

protected:
    void RefreshUI() override;

private:
    void InitUI(ZRVipMaskType maskType, const zrstdui::image_blur::WidgetPainterBufferSource& bufferSource);

    ZBackgroundBlurWidget* m_pBlurWidget = nullptr;
    ZMultilineText* m_pMaskText = nullptr;  // null in the compact layout
    ZButton* m_pActionButton = nullptr;
    const SVipMaskBlur m_blur;
    int m_nPageStatus = 0;
    ZRVipUIDataType m_enDataType;
};

/// A mask with the mark of the membership and one line of text. A click anywhere on it opens the page. It never
/// activates a right. Main thread.
class CZRVipExclusiveMaskWidget : public CZRVipBaseWidget {
    Q_OBJECT

public:
    CZRVipExclusiveMaskWidget(EnPremiumAccess access, ZRVipUIDataType dataType, QString pageId, QWidget* parent,
                              zrstdui::image_blur::WidgetPainterBufferSource bufferSource, double blurRadiusTheme3,
                              double blurRadiusOther, bool popupStyle);
    ~CZRVipExclusiveMaskWidget() override;

    static bool IsVipMaskEnabled(EnPremiumAccess access, ZRVipUIDataType dataType);

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override;
    void ReportClick();

protected:
    void RefreshUI() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void InitUI(const zrstdui::image_blur::WidgetPainterBufferSource& bufferSource);

    ZBackgroundBlurWidget* m_pBlurWidget = nullptr;
    QLabel* m_pMarkLabel = nullptr;
    ZText* m_pMaskText = nullptr;
    const SVipMaskBlur m_blur;
    int m_nPageStatus = 0;
    int m_nBtnUrlID = 0;
    ZRVipUIDataType m_enDataType;
};
