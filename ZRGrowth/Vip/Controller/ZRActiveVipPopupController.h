#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "core/IZRChannelProxy.h"
#include "modules/ZRGrowthTypes.h"
#include "ui/ZToast.h"

class CZRAdMiddlePopupView;

/// Activates a right that is ready, and shows the result over a window: a picture that leads to a page, or a toast.
/// The right itself changes by the server's push. Main thread.
class CZRActiveVipPopupController : public QObject {
    Q_OBJECT

public:
    explicit CZRActiveVipPopupController(QObject* parent);
    ~CZRActiveVipPopupController() override;

    /// Sends the request. A later request replaces the window for the results of both.
    void RequestActiveVip(EnPremiumAccess access, const QString& targetUrl, QPointer<QWidget> activeVipPopupParent);

public Q_SLOTS:
    void OnRequestActiveVipCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                    const CSResponseExt* pRspExt, QString targetUrl);
    void OnImageClicked(bool jumpResult);
    void OnClosed();
    void OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count);
    void OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count);

private:
    void HandleResponse(CSProtoError error, const CSProtoData& data, const QString& targetUrl);
    void ShowPopup(const QString& targetUrl);
    QString GetActiveVipPopImageUrl();
    void DeleteActiveVipPopup();
    void ShowToast(ZToast::ZrStyle style, unsigned int toastLangId);

    QPointer<CZRAdMiddlePopupView> m_pPopup;
    QPointer<QWidget> m_pActiveVipPopupParent;
};
