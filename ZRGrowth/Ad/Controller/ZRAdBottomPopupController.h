#pragma once

#include "Ad/Controller/ZRAdPopupController.h"

/// The slot of the bottom popup, at its fixed position.
class CZRAdBottomPopupController : public CZRAdPopupController {
    Q_OBJECT

public:
    explicit CZRAdBottomPopupController(QObject* parent);
    ~CZRAdBottomPopupController() override;

    void RequestAdBottomPopup(ZRAdApiType apiType, const QList<QString>& adIds);

    /// The main window's layout has changed.
    void UpdateAdBottomPopupCoordinates();

protected:
    void AddAdPopupView(CZRAdPopupModel* model, bool enableClose, int showDuration, const QString& adId,
                        const QString& pushId) override;
    void DeleteAdPopupView() override;
};
