#pragma once

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/IChannel.h"
#include "support/Failing.h"

class IPoster;

namespace google {
namespace protobuf {
class MessageLite;
}
}  // namespace google

/// A command as it was sent. `context` may be gone and is for comparison only.
struct SentCommand {
    unsigned long session = 0;
    uint32_t cmd = 0;
    std::string body;
    QObject* context = nullptr;
};

std::ostream& operator<<(std::ostream& stream, const SentCommand& command);

/// The command channel; the test is the server. Answers and pushes run before the call that gives them returns. A
/// command that no test looked at (Sent, LastSession, an answer to it) fails the test.
class CScriptedChannel : public QObject, public IChannel {
public:
    explicit CScriptedChannel(IPoster& poster);
    ~CScriptedChannel() override;

    const std::vector<SentCommand>& Sent();

    /// The session of the last command. 0 if nothing was sent.
    unsigned long LastSession();

    /// Answers with success. It does nothing for an answered session and for one whose context is gone. An unknown
    /// session fails the test.
    void Reply(unsigned long session, uint32_t cmd, const google::protobuf::MessageLite& message);
    void Reply(unsigned long session, uint32_t cmd, std::string bytes);
    void ReplyWith(unsigned long session, CSProtoError error, const CSProtoData& data);

    /// Answers with an error, the number of the command and no bytes.
    void Fail(unsigned long session, CSProtoError error);

    void Push(uint32_t cmd, const google::protobuf::MessageLite& message);
    void Push(uint32_t cmd, std::string bytes);

    /// Pushes to the subscribers of data.m_nCmd.
    void PushWith(CSProtoError error, const CSProtoData& data);

    /// Pushes to the subscribers of `boundCommand`, whatever command `data` has.
    void PushWith(uint32_t boundCommand, CSProtoError error, const CSProtoData& data);

    /// Answers each later `cmd` automatically and later. The test need not look at it.
    void AnswerAlways(uint32_t cmd, std::string bytes);

    /// Each later command fails asynchronously with kCSProtoDisconnected.
    void BeOffline();

    /// Loses the connection: waiting commands fail with kCSProtoDisconnected before this returns.
    void FailOutstanding();

    /// The commands that `which` selects fail asynchronously with `error`.
    void FailSends(Failing which, CSProtoError error = kCSProtoDisconnected);

    /// Commands with a live subscriber, one for each subscription, in order of binding.
    std::vector<uint32_t> BoundCommands() const;

    /// Number of waiting commands whose context lives.
    int OutstandingCount() const;

    /// Marks all commands as looked at and clears the record.
    void Forget();

    /// Fails the test for each command that no test looked at.
    void CheckAllLookedAt();

    unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) override;
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override;
    void UnbindCallback(QObject* context) override;

private:
    struct Outstanding {
        QPointer<QObject> context;
        CSCallback callback;
        uint32_t cmd = 0;
    };
    struct Subscription {
        uint32_t cmd = 0;
        QPointer<QObject> context;
        CSCallback callback;
        bool bound = true;
    };

    void CompleteLater(unsigned long session, CSProtoError error, CSProtoData data);
    void Complete(unsigned long session, CSProtoError error, const CSProtoData& data);
    void LookAt(unsigned long session);

    IPoster& m_poster;
    unsigned long m_nLastSession = 0;
    std::vector<SentCommand> m_sent;
    std::vector<bool> m_lookedAt;  // beside m_sent
    std::map<unsigned long, Outstanding> m_outstanding;
    std::vector<std::shared_ptr<Subscription>> m_subscriptions;
    std::map<uint32_t, std::string> m_answers;
    Failing m_failing = Failing::Never();
    CSProtoError m_enFailure = kCSProtoDisconnected;
};
