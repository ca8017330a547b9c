#include "workbench/ads/AdInterval.h"

#include <algorithm>

#include "framework/JsonText.h"
#include "workbench/ServerText.h"
#include "workbench/diagnosis/AdRequest.h"

namespace {

constexpr const char* kInterval = "showInterval";

bool IsBottomPopup(const Json::Value& slot) {
    return slot["adType"] == kBottomPopup.type && slot["adPosition"] == kBottomPopup.position;
}

}  // namespace

CAdInterval::CAdInterval(IControlClient& server, QObject* parent) : QObject(parent), m_server(server) {}

void CAdInterval::Set(std::optional<qint64> seconds) {
    if (!seconds && !m_override) {
        Q_EMIT Done(QString());
        return;
    }
    Ask("GET", QStringLiteral("/v1/scenario"), QByteArray(), [this, seconds](const ServerAnswer& answer) {
        if (!answer.error.isEmpty()) {
            Q_EMIT Done(ErrorText(answer));
            return;
        }
        Json::Value ads = answer.body["ads"];
        const auto slot = std::find_if(ads.begin(), ads.end(), IsBottomPopup);
        if (slot == ads.end() || !(*slot)[kInterval].isInt64()) {
            Q_EMIT Done(QStringLiteral("The server's scenario has no bottom popup"));
            return;
        }
        const qint64 own = m_override ? m_nOwn : (*slot)[kInterval].asInt64();
        (*slot)[kInterval] = Json::Int64(seconds.value_or(own));
        Put(ads, own, seconds);
    });
}

void CAdInterval::Ask(const char* verb, const QString& path, const QByteArray& json,
                      IControlClient::Answered answered) {
    m_server.Ask(verb, path, json, this,
                 [this, asked = m_nServer, answered = std::move(answered)](const ServerAnswer& answer) {
                     if (asked == m_nServer) {
                         answered(answer);
                     }
                 });
}

void CAdInterval::Put(const Json::Value& ads, qint64 own, std::optional<qint64> seconds) {
    Ask("PUT", QStringLiteral("/v1/ads"), QByteArray::fromStdString(host::OneLine(ads)),
        [this, own, seconds](const ServerAnswer& answer) {
            if (answer.error.isEmpty()) {
                m_nOwn = own;
                m_override = seconds;
            }
            Q_EMIT Done(answer.error.isEmpty() ? QString() : ErrorText(answer));
        });
}

void CAdInterval::ForgetServer() {
    ++m_nServer;
    m_override.reset();
}
