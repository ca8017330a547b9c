#pragma once

#include <QMap>
#include <QObject>
#include <QTimer>
#include <QVector>
#include <memory>

#include "core/IZRChannelProxy.h"
#include "core/message_dispatch.h"
#include "modules/ZRGrowthTypes.h"

namespace web_premium_access {
class GetUiMsgAndPremiumAccessReq;
}  // namespace web_premium_access

/// Updates the table of rights from the server: at login, each hour, after a change of the display language, after a
/// push and on request. It works from its construction on, also after logouts. Main thread.
class CZRPremiumDataHandler : public QObject {
    Q_OBJECT

public:
    explicit CZRPremiumDataHandler(QObject* parent);
    ~CZRPremiumDataHandler() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    /// Requests all rights or a list. Returns the session of the request. A valid answer is announced by message 80050
    /// with `serverPush` and by 80051 without it.
    unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush);
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush);
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush);

    void OnMessageDispath(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body);
    void OnPremiumPushLoginNotify(unsigned long session, CSProtoError error, const CSProtoData& data,
                                  const CSResponseExt* ext);
    void ParsePremiumRsp(unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext);
    void ParseUiMsgAndPremiumAccessRsp(unsigned long session, const CSProtoData& data, bool serverPush);

private Q_SLOTS:
    void OnTimerSlot();

private:
    unsigned long SendRequest(const web_premium_access::GetUiMsgAndPremiumAccessReq& request, bool serverPush);

    QTimer* m_pTimer = nullptr;
    QMap<unsigned long, bool> m_mapServerPush;  // by session, of each request ever sent
};
