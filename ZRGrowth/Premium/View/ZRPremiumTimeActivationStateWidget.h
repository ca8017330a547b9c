#pragma once

#include <QPointer>

#include "modules/IGrowthPremiumWidget.h"

class QHBoxLayout;
class ZButton;
class ZSvgWidget;
class ZText;

/// The strip for a right of limited time. An operation does nothing if a part that it needs is gone. Main thread.
class CZRPremiumTimeActivationStateWidget : public IGrowthPremiumWidget {
    Q_OBJECT

public:
    CZRPremiumTimeActivationStateWidget(const QString& mainTitle, const QString& mainBtn, const QString& uiType,
                                        const QString& detailTitle, int daysLeft, QWidget* parent);
    ~CZRPremiumTimeActivationStateWidget() override;

    void SetCallback(std::function<void(bool)> callback, QObject* context) override;
    void SetShowCallback(std::function<void(bool)> callback, QObject* context) override;
    void UpdateUiData(const QString& mainTitle, const QString& mainBtn, const QString& uiType,
                      const QString& detailTitle, int daysLeft) override;

    void SetSizePolicyFixed();

    /// Fits the texts into the width by smaller fonts.
    void UpdateTextWidgetSize();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private Q_SLOTS:
    void OnMainButtonClicked(bool bClick);

private:
    struct Level;
    static const Level kLevels[4];

    void InitWidget();
    bool HasTexts() const;
    void UpdateDateWidget(int daysLeft);
    void UpdateMainBtnWidget(const QString& mainBtn);
    void UpdateMainTitleWidget(const QString& mainTitle);
    void UpdatePremiumSvgWidget(const QString& uiType);
    void UpdateDetailTitleWidget(const QString& detailTitle);
    void UpdateWidget();
    void UpdateWidgetColor();
    void SetLevelNames(const Level& level);
    void SetTitleHight(int height);
    void ApplyLevel(const Level& level);
    void StepDown(const ZText& text);
    void PremiumWidgetHide(bool hidden);

    QPointer<ZText> m_pDaysUnitText;
    QPointer<ZText> m_pMainTitleText;
    QPointer<ZText> m_pDaysText;
    QPointer<QWidget> m_pTitleRowWidget;
    QPointer<ZButton> m_pMainButton;
    QPointer<QHBoxLayout> m_pRootLayout;
    QPointer<ZText> m_pDetailTitleText;
    QPointer<ZSvgWidget> m_pPremiumTagSvg;
    QPointer<QObject> m_pContext;  // guards both functions
    std::function<void(bool)> m_fnCallback;
    std::function<void(bool)> m_fnShowCallback;
};
