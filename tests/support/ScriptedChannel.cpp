#include "support/ScriptedChannel.h"

#include <google/protobuf/message_lite.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "core/IPoster.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Channel");

}  // namespace

std::ostream& operator<<(std::ostream& stream, const SentCommand& command) {
    return stream << "command " << command.cmd << " of session " << command.session << ", "
                  << ::testing::PrintToString(command.body);
}

CScriptedChannel::CScriptedChannel(IPoster& poster) : m_poster(poster) {}

CScriptedChannel::~CScriptedChannel() = default;

const std::vector<SentCommand>& CScriptedChannel::Sent() {
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
    return m_sent;
}

unsigned long CScriptedChannel::LastSession() {
    if (m_sent.empty()) {
        return 0;
    }
    m_lookedAt.back() = true;
    return m_sent.back().session;
}

void CScriptedChannel::Reply(unsigned long session, uint32_t cmd, const google::protobuf::MessageLite& message) {
    Reply(session, cmd, message.SerializeAsString());
}

void CScriptedChannel::Reply(unsigned long session, uint32_t cmd, std::string bytes) {
    ReplyWith(session, kCSProtoOk, CSProtoData{cmd, std::move(bytes)});
}

void CScriptedChannel::ReplyWith(unsigned long session, CSProtoError error, const CSProtoData& data) {
    if (session == 0 || session > m_nLastSession) {
        ADD_FAILURE() << "The test answers session " << session << ", which was never sent";
        return;
    }
    LookAt(session);
    Complete(session, error, data);
}

void CScriptedChannel::Fail(unsigned long session, CSProtoError error) {
    const auto found = m_outstanding.find(session);
    ReplyWith(session, error, CSProtoData{found == m_outstanding.end() ? 0 : found->second.cmd, std::string()});
}

void CScriptedChannel::Push(uint32_t cmd, const google::protobuf::MessageLite& message) {
    Push(cmd, message.SerializeAsString());
}

void CScriptedChannel::Push(uint32_t cmd, std::string bytes) {
    PushWith(kCSProtoOk, CSProtoData{cmd, std::move(bytes)});
}

void CScriptedChannel::PushWith(CSProtoError error, const CSProtoData& data) {
    PushWith(data.m_nCmd, error, data);
}

void CScriptedChannel::PushWith(uint32_t boundCommand, CSProtoError error, const CSProtoData& data) {
    const auto subscriptions = m_subscriptions;  // what is bound from now on gets the next push
    for (const auto& subscription : subscriptions) {
        if (subscription->cmd == boundCommand && subscription->bound && subscription->context) {
            host::CallAndLogExceptions(kLog, "A push callback",
                                       [&] { subscription->callback(0, error, data, nullptr); });
        }
    }
}

void CScriptedChannel::AnswerAlways(uint32_t cmd, std::string bytes) {
    m_answers[cmd] = std::move(bytes);
}

void CScriptedChannel::BeOffline() {
    FailSends(Failing::Always());
}

// A command sent by a callback has a later session and is not affected.
void CScriptedChannel::FailOutstanding() {
    for (const unsigned long last = m_nLastSession; !m_outstanding.empty() && m_outstanding.begin()->first <= last;) {
        const auto& [session, request] = *m_outstanding.begin();
        Complete(session, kCSProtoDisconnected, CSProtoData{request.cmd, std::string()});
    }
}

void CScriptedChannel::FailSends(Failing which, CSProtoError error) {
    m_failing = which;
    m_enFailure = error;
}

std::vector<uint32_t> CScriptedChannel::BoundCommands() const {
    std::vector<uint32_t> commands;
    for (const auto& subscription : m_subscriptions) {
        if (subscription->context) {
            commands.push_back(subscription->cmd);
        }
    }
    return commands;
}

int CScriptedChannel::OutstandingCount() const {
    return int(std::count_if(m_outstanding.begin(), m_outstanding.end(),
                             [](const auto& entry) { return !entry.second.context.isNull(); }));
}

void CScriptedChannel::Forget() {
    m_sent.clear();
    m_lookedAt.clear();
}

void CScriptedChannel::CheckAllLookedAt() {
    for (size_t i = 0; i < m_sent.size(); ++i) {
        if (!m_lookedAt[i]) {
            ADD_FAILURE() << "Unexpected send: " << m_sent[i];
        }
    }
}

unsigned long CScriptedChannel::SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) {
    const unsigned long session = ++m_nLastSession;
    m_sent.push_back(SentCommand{session, data.m_nCmd, data.m_strData, context});
    m_outstanding.emplace(session, Outstanding{context, std::move(callback), data.m_nCmd});
    const auto answer = m_answers.find(data.m_nCmd);
    m_lookedAt.push_back(answer != m_answers.end());
    if (m_failing.Next()) {
        CompleteLater(session, m_enFailure, CSProtoData{data.m_nCmd, std::string()});
    } else if (answer != m_answers.end()) {
        CompleteLater(session, kCSProtoOk, CSProtoData{data.m_nCmd, answer->second});
    }
    return session;
}

void CScriptedChannel::BindCallback(unsigned short commandId, CSCallback callback, QObject* context) {
    if (context && callback) {
        m_subscriptions.push_back(
            std::make_shared<Subscription>(Subscription{commandId, context, std::move(callback), true}));
    }
}

// Destroying a callback may call the channel, so the tables are consistent first.
void CScriptedChannel::UnbindCallback(QObject* context) {
    if (!context) {
        return;
    }
    std::vector<Outstanding> dropped;
    for (auto it = m_outstanding.begin(); it != m_outstanding.end();) {
        if (it->second.context == context) {
            dropped.push_back(std::move(it->second));
            it = m_outstanding.erase(it);
        } else {
            ++it;
        }
    }
    const auto firstUnbound = std::stable_partition(m_subscriptions.begin(), m_subscriptions.end(),
                                                    [context](const auto& it) { return it->context != context; });
    const std::vector<std::shared_ptr<Subscription>> unbound(firstUnbound, m_subscriptions.end());
    m_subscriptions.erase(firstUnbound, m_subscriptions.end());
    for (const auto& subscription : unbound) {
        subscription->bound = false;
    }
}

void CScriptedChannel::CompleteLater(unsigned long session, CSProtoError error, CSProtoData data) {
    m_poster.Post(this, std::chrono::milliseconds(0),
                  [this, session, error, data = std::move(data)] { Complete(session, error, data); });
}

void CScriptedChannel::Complete(unsigned long session, CSProtoError error, const CSProtoData& data) {
    const auto found = m_outstanding.find(session);
    if (found == m_outstanding.end()) {
        return;
    }
    const Outstanding request = std::move(found->second);
    m_outstanding.erase(found);
    if (request.context && request.callback) {
        host::CallAndLogExceptions(kLog, "A reply callback", [&] { request.callback(session, error, data, nullptr); });
    }
}

void CScriptedChannel::LookAt(unsigned long session) {
    for (size_t i = 0; i < m_sent.size(); ++i) {
        if (m_sent[i].session == session) {
            m_lookedAt[i] = true;
        }
    }
}
