#pragma once

#include "Ad/Controller/ZRAdPopupController.h"

/// Controls the bottom popup at its fixed ad position.
class CZRAdBottomPopupController : public CZRAdPopupController {
    Q_OBJECT

public:
    explicit CZRAdBottomPopupController(QObject* parent);
    ~CZRAdBottomPopupController() override;

    void RequestAdBottomPopup(ZRAdApiType apiType, const QList<QString>& adIds);

    /// Call it after a change of the main window's layout.
    void UpdateAdBottomPopupCoordinates();

protected:
    void AddAdPopupView(CZRAdPopupModel* model, bool enableClose, int showDuration, const QString& adId,
                        const QString& pushId) override;
    void DeleteAdPopupView() override;
};
