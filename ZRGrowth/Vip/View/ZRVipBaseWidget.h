#pragma once

#include <QString>
#include <memory>
#include <string>

#include "modules/IGrowthVipBaseWidget.h"

/// The base of all VIP widgets: the right and the page they belong to, a refresh after a change of theme, and reports
/// of how long they were visible. Main thread.
class CZRVipBaseWidget : public IGrowthVipBaseWidget {
    Q_OBJECT

public:
    CZRVipBaseWidget(EnPremiumAccess access, QString pageId, QWidget* parent);
    ~CZRVipBaseWidget() override;

protected:
    /// Start and report the exposure at show and hide. No right, no report.
    virtual void ReportExposeStart();
    virtual void ReportExposeEnd();

    /// Displays the current state.
    virtual void RefreshUI();

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    EnPremiumAccess m_enAccess;
    std::shared_ptr<std::string> m_exposeTimer;
    QString m_strPageId;
};
