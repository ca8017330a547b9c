#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QWidget>

#include "modules/ZRGrowthTypes.h"
#include "ui/image_blur.h"

class CZRActiveVipPopupController;
class CZRVipDataHandler;
class IGrowthVipBaseWidget;

/// The root of the VIP subsystem: the user's status, the widgets and the action of a click on one. Init() runs inside
/// the first use, and nothing stops it. One per process, made at its first use and never deleted; its operations are
/// for the main thread. After a first use on another thread Init() runs later, on the main thread.
class CZRVipManager : public QObject {
    Q_OBJECT

public:
    static CZRVipManager* Singleton();

    CZRVipManager();
    ~CZRVipManager() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    void RequestVipStatus();
    void ClearVipStatus();

    /// Return the status as last received. Before Init() it is false and 0, and the engine status is undetermined.
    bool HasVipQualification() const;
    int GetVipGrade() const;
    int GetVipState() const;
    int GetNewVipState() const;
    ZRVipEngineStatus GetVipEngineStatus() const;

    /// Returns false in a client of another edition than Velora, whatever the server reports.
    bool IsNewVipSystem() const;

    /// Returns whether the user is a member of the VIP system that applies.
    bool IsVipMember() const;

    /// Activates a right that is ready and has a target, otherwise opens the link of the text set.
    void HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                QPointer<QWidget> activeVipPopupParent);
    void OpenVipWebPage(const QString& strUrl);

    /// The enabling rules, and new widgets whose parent owns them. GetVipMask returns null for a type without a mask.
    bool IsVipIconEnabled(EnPremiumAccess access);
    IGrowthVipBaseWidget* GetVipIcon(EnPremiumAccess access, QWidget* parent);
    QString GetVipIconImageName();
    QSize GetVipIconImageSize();
    bool IsVipTagEnabled(EnPremiumAccess access);
    IGrowthVipBaseWidget* GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                    QWidget* parent);
    QString GetVipTagImageName(ZRVipTagType tagType);
    QSize GetVipTagImageSize(ZRVipTagType tagType);
    bool IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType);
    IGrowthVipBaseWidget* GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType, const QString& pageId,
                                       QWidget* parent);
    bool IsVipMaskEnabled(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType);
    IGrowthVipBaseWidget* GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType,
                                     const QString& pageId, QWidget* parent,
                                     const zrstdui::image_blur::WidgetPainterBufferSource& bufferSource,
                                     double blurRadiusTheme3, double blurRadiusOther, bool popupStyle);

private:
    CZRVipDataHandler* m_pDataHandler = nullptr;                         // a child
    CZRActiveVipPopupController* m_pActiveVipPopupController = nullptr;  // a child
};
