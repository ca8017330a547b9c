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

/// Keeps the table of rights in step with the server: asks at login, each hour, when the display language
/// changes, after a push and on request. Works from its construction on, and on through logouts. Main thread.
class CZRPremiumDataHandler : public QObject {
    Q_OBJECT

public:
    explicit CZRPremiumDataHandler(QObject* parent);
    ~CZRPremiumDataHandler() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    /// Asks for all rights or for a list, and gives the session of the request. With `serverPush` nobody waits
    /// for the answer, and a good one goes out as message 80050; without, as 80051.
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
