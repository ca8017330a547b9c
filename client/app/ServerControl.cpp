#include "ServerControl.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>

#include "ServerProcess.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Control");
constexpr int kRetryMs = 2'000;
constexpr int kAnswerLimitMs = 10'000;

}  // namespace

CServerControl::CServerControl() {
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(kRetryMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &CServerControl::Refresh);
}

CServerControl::~CServerControl() = default;

void CServerControl::Open(const QUrl& address, const QByteArray& token) {
    m_address = address;
    m_token = token;
    Refresh();
}

void CServerControl::Close() {
    m_retryTimer.stop();
    m_address.clear();
    m_token.clear();
}

QNetworkRequest CServerControl::RequestTo(const QString& path) const {
    QUrl url = m_address;
    url.setPath(path);
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", "Bearer " + m_token);
    request.setTransferTimeout(kAnswerLimitMs);
    return request;
}

// Is created on first use, because it scans the machine's networks and would delay the first window.
QNetworkAccessManager& CServerControl::Network() {
    if (!m_pNetwork) {
        m_pNetwork = std::make_unique<QNetworkAccessManager>();
    }
    return *m_pNetwork;
}

void CServerControl::Ask(const char* method, const QString& path, const QByteArray& json, QObject* context,
                         Answered answered) {
    QNetworkRequest request = RequestTo(path);
    if (!json.isEmpty()) {
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    }
    QNetworkReply* reply = Network().sendCustomRequest(request, method, json);
    connect(reply, &QNetworkReply::finished, this,
            [reply, context = QPointer<QObject>(context), answered = std::move(answered)] {
                reply->deleteLater();
                if (context) {
                    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
                    const auto answer = ServerAnswer::Read(status, reply->readAll(), reply->errorString());
                    host::CallAndLogExceptions(kLog, "A reader of the server's answer", [&] { answered(answer); });
                }
            });
}

QString CServerControl::Curl(const ControlRequest& request) const {
    const QString url = QString::fromLatin1(RequestTo(request.path).url().toEncoded());
    return CurlLine(request, url, QString::fromLatin1(m_token));
}

void CServerControl::Refresh() {
    if (m_address.isEmpty()) {
        return;
    }
    QNetworkReply* reply = Network().get(RequestTo(QStringLiteral("/v1/state")));
    connect(reply, &QNetworkReply::finished, this, [this, reply, token = m_token] {
        reply->deleteLater();
        if (token != m_token) {
            return;  // the answer of a former server
        }
        ServerState state;
        if (reply->error() == QNetworkReply::NoError && ReadState(reply->readAll(), state)) {
            Q_EMIT StateReceived(state);
            return;
        }
        const QString reason =
            reply->error() != QNetworkReply::NoError ? reply->errorString() : QStringLiteral("an unreadable answer");
        kLog.Error(FMT_STRING("The server's state can't be had: {}"), reason.toStdString());
        m_retryTimer.start();
        Q_EMIT Failed(reason);
    });
}

bool CServerControl::ReadState(const QByteArray& json, ServerState& state) {
    std::string error;
    const auto said = host::ParseJson(json.toStdString(), error);
    ServerState read;
    if (!said || !said->isObject() || !ReadPort((*said)["channel"], read.channelPort) || !(*said)["users"].isArray() ||
        (said->isMember("http") && !ReadPort((*said)["http"], read.httpPort))) {
        return false;
    }
    for (const Json::Value& user : (*said)["users"]) {
        if (!user.isObject() || !user["id"].isUInt64() || !user["name"].isString()) {
            return false;
        }
        read.users.push_back({user["id"].asUInt64(), QString::fromStdString(user["name"].asString())});
    }
    state = read;
    return true;
}
