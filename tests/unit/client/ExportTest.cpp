#include "workbench/Export.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "support/ScriptedHostTest.h"
#include "workbench/Aliases.h"
#include "workbench/LogModel.h"
#include "workbench/SeenModel.h"
#include "workbench/WireDecoder.h"

using namespace ::testing;

namespace {

constexpr uint64_t kUser = 18'446'744'073'709'551'001ull;
constexpr uint64_t kOtherUser = 10'001;
constexpr uint64_t kSession = 777'123'456'789ull;
const QString kDevice = QStringLiteral("0123456789abcdef0123456789abcdef");
const QString kToken = QStringLiteral("s3cret-T0ken");

class ExportTest : public ScriptedHostTest {
protected:
    ExportTest() {
        aliases.LearnNumber(QStringLiteral("user"), kUser);
        aliases.LearnNumber(QStringLiteral("user"), kOtherUser);
        aliases.LearnNumber(QStringLiteral("session"), kSession);
        aliases.LearnText(QStringLiteral("device"), kDevice);
        aliases.LearnText(QStringLiteral("token"), kToken);
    }

    template <class What>
    void See(const What& what) {
        Seen seen;
        seen.number = ++number;
        seen.what = what;
        for (CSeenModel* model : {&traffic, &store_, &urls_}) {
            model->Add(seen);
        }
    }

    void Write(const QString& text) {
        LogEntry entry;
        entry.record.module = "ZRGrowth";
        entry.record.text = text;
        lines.Add(entry);
    }

    QByteArray Exported() {
        time.Advance(std::chrono::seconds(1));
        return workbench_export::Json({&traffic, &store_, &urls_}, lines, aliases);
    }

    CAliases aliases;
    CWireDecoder decoder;
    CSeenModel traffic{NewTrafficFormat(decoder)};
    CSeenModel store_{NewStoreFormat()};
    CSeenModel urls_{NewUrlFormat()};
    CLogModel lines;
    uint64_t number = 0;
};

}  // namespace

TEST_F(ExportTest, NoKnownIdAndNoTokenRemains) {
    const std::string user = std::to_string(kUser);
    const std::string session = std::to_string(kSession);
    const std::string secrets = user + " " + session + " " + kDevice.toUpper().toStdString() + kToken.toStdString();
    See(StoreSeen{true, kOtherUser, "ZRBaseAIChatEnableCacheDataKey_" + user, secrets, false, true});
    See(StoreSeen{true, kUser, "raw", "\xff" + secrets, false, true});
    See(UrlSeen{QStringLiteral("https://a.example/?uid=10001&t=") + kToken, kDevice, 0, 1});
    MessageSeen message;
    message.hasBody = true;
    message.p1 = kUser;
    message.p2 = kOtherUser;
    message.wParam = kSession;
    message.location = "at " + user;
    See(message);
    See(CommandSeen{CommandSeen::EnKind::Replied, 20982, 1, 0, 1, std::string("\x12") + char(secrets.size()) + secrets,
                    20982});
    See(CommandSeen{CommandSeen::EnKind::Sent, 4711, 2, 0, -1, secrets, 4711});
    Write(QStringLiteral("\t") + QString::fromStdString(secrets));
    Write(QString::fromLatin1("user 10001, \xC3\xA9t\xC3\xA9 10001"));

    const QByteArray json = Exported();

    for (const std::string& secret : {user, session, std::to_string(kOtherUser), kDevice.toStdString(),
                                      kDevice.toUpper().toStdString(), kToken.toStdString()}) {
        EXPECT_FALSE(json.contains(QByteArray::fromStdString(secret))) << secret << "\n" << json.constData();
    }
    // and what is left is told apart all the same
    EXPECT_TRUE(json.contains("ZRBaseAIChatEnableCacheDataKey_user-1"));
    EXPECT_TRUE(json.contains("uid=user-2&t=token-1"));
    EXPECT_TRUE(json.contains("user user-2, été user-2"));
    EXPECT_TRUE(json.contains("session-1"));
    EXPECT_TRUE(json.contains("device-1"));
}

TEST_F(ExportTest, HasAListForEachKind) {
    See(UrlSeen{QStringLiteral("https://a.example/"), QString(), 0, 1});
    See(MessageSeen{});
    Write(QStringLiteral("a line"));

    const QJsonObject all = QJsonDocument::fromJson(Exported()).object();

    EXPECT_EQ(all[QStringLiteral("traffic")].toArray().size(), 1);
    EXPECT_EQ(all[QStringLiteral("store")].toArray().size(), 0);
    EXPECT_EQ(all[QStringLiteral("url")].toArray().size(), 1);
    EXPECT_EQ(all[QStringLiteral("log")].toArray().size(), 1);
}

TEST_F(ExportTest, ANumberInsideAnotherIsNoId) {
    EXPECT_EQ(aliases.Redacted(QStringLiteral("110001 10001 100011 x10001y")),
              QStringLiteral("110001 user-2 100011 xuser-2y"));
}

TEST_F(ExportTest, AFileThatCantBeWrittenIsSaid) {
    EXPECT_NE(workbench_export::Write(QStringLiteral("/nonexistent/folder/x.json"), "{}"), QString());
}
