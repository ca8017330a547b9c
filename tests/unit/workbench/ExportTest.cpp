#include "workbench/Export.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "support/ScriptedHostTest.h"
#include "workbench/EventModel.h"

using namespace ::testing;

namespace {

constexpr uint64_t kUser = 18'446'744'073'709'551'001ull;
constexpr uint64_t kOtherUser = 10'001;
constexpr uint64_t kSession = 777'123'456'789ull;
const QString kDevice = QStringLiteral("0123456789abcdef0123456789abcdef");
const QString kName = QStringLiteral("Zoë Free");
const QString kToken = QStringLiteral("s3cret-T0ken");

class ExportTest : public ScriptedHostTest {
protected:
    ExportTest() {
        aliases.AddSecretNumber(QStringLiteral("user"), kUser);
        aliases.AddSecretNumber(QStringLiteral("user"), kOtherUser);
        aliases.AddSecretNumber(QStringLiteral("session"), kSession);
        aliases.AddSecretText(QStringLiteral("device"), kDevice);
        aliases.AddSecretText(QStringLiteral("name"), kName);
        aliases.AddSecretText(QStringLiteral("token"), kToken);
    }

    template <class What>
    void See(const What& what) {
        TraceEvent seen;
        seen.number = ++number;
        seen.what = what;
        for (CEventModel* model : {&traffic, &store_, &urls_}) {
            model->Add(seen);
        }
    }

    void Write(const QString& text) {
        LogEntry entry;
        entry.record.module = "ZRGrowth";
        entry.record.text = text;
        lines.Add(entry);
    }

    workbench_export::Recording Recorded() const {
        workbench_export::Recording recording;
        recording.timeMs = 1'700'000'000'123;
        for (const CEventModel* model : {&traffic, &store_, &urls_, &lines}) {
            recording.lists.push_back({model->Format(), model->Rows()});
        }
        return recording;
    }

    QByteArray Exported() {
        time.Advance(std::chrono::seconds(1));
        workbench_export::Recording recording = Recorded();
        EXPECT_EQ(workbench_export::Write(path, recording, aliases), QString());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("made/on/demand/x.json"));
    CRedactor aliases;
    CEventModel traffic{NewTrafficFormat()};
    CEventModel store_{NewStoreFormat()};
    CEventModel urls_{NewUrlFormat()};
    CEventModel lines{NewLogFormat()};
    uint64_t number = 0;
};

}  // namespace

TEST_F(ExportTest, NoKnownIdAndNoTokenRemains) {
    const std::string user = std::to_string(kUser);
    const std::string session = std::to_string(kSession);
    const std::string secrets =
        user + " " + session + " " + kDevice.toUpper().toStdString() + kToken.toStdString() + kName.toStdString();
    See(StoreTrace{true, kOtherUser, "ZRBaseAIChatEnableCacheDataKey_" + user, secrets, false, true});
    See(StoreTrace{true, kUser, "raw", "\xff" + secrets, false, true});
    See(UrlTrace{QStringLiteral("https://a.example/?uid=10001&t=") + kToken, kDevice, 0, 1});
    MessageTrace message;
    message.hasBody = true;
    message.p1 = kUser;
    message.p2 = kOtherUser;
    message.wParam = kSession;
    message.location = "at " + user;
    See(message);
    See(CommandTrace{CommandTrace::EnKind::Replied, 20982, 1, 0, 1,
                     std::string("\x12") + char(secrets.size()) + secrets, 20982});
    See(CommandTrace{CommandTrace::EnKind::Sent, 4711, 2, 0, -1, secrets, 4711});
    Write(QStringLiteral("\t") + QString::fromStdString(secrets));
    Write(QString::fromLatin1("user 10001, \xC3\xA9t\xC3\xA9 10001"));

    const QByteArray json = Exported();

    for (const std::string& secret : {user, session, std::to_string(kOtherUser), kDevice.toStdString(),
                                      kDevice.toUpper().toStdString(), kToken.toStdString(), kName.toStdString()}) {
        EXPECT_FALSE(json.contains(QByteArray::fromStdString(secret))) << secret << "\n" << json.constData();
    }
    // different values have different aliases
    EXPECT_TRUE(json.contains("ZRBaseAIChatEnableCacheDataKey_user-1"));
    EXPECT_TRUE(json.contains("uid=user-2&t=token-1"));
    EXPECT_TRUE(json.contains("user user-2, été user-2"));
    EXPECT_TRUE(json.contains("session-1"));
    EXPECT_TRUE(json.contains("device-1"));
}

struct SecretBytes {
    const char* name;
    std::string bytes;
    const char* alias;
};

void PrintTo(const SecretBytes& row, std::ostream* stream) {
    *stream << row.alias;
}

class SecretBytesTest : public ExportTest, public WithParamInterface<SecretBytes> {
protected:
    static std::string HexOf(const std::string& bytes) {
        return QByteArray::fromStdString(bytes).toHex(' ').toStdString();
    }

    /// The hex digits of the last store row's value.
    std::string ExportedHex() {
        const QJsonObject all = QJsonDocument::fromJson(Exported()).object();
        const QJsonObject row = all[QStringLiteral("store")].toArray().last().toObject();
        return row[QStringLiteral("detail")].toArray()[1].toObject()[QStringLiteral("hex")].toString().toStdString();
    }
};

TEST_P(SecretBytesTest, AreReplacedAmongBytesThatNobodyCouldRead) {
    See(StoreTrace{true, kOtherUser, "raw", "\xff" + GetParam().bytes + "\xfe", false, true});

    EXPECT_EQ(ExportedHex(), std::string("ff ") + GetParam().alias + " fe");
}

INSTANTIATE_TEST_SUITE_P(
    Secrets, SecretBytesTest,
    Values(SecretBytes{"IdInDigits", "10001", "user-2"}, SecretBytes{"IdAsVarint", "\x91\x4e", "user-2"},
           SecretBytes{"IdInEightBytes", std::string("\x11\x27\0\0\0\0\0\0", 8), "user-2"},
           SecretBytes{"IdInEightBytesBigFirst", std::string("\0\0\0\0\0\0\x27\x11", 8), "user-2"},
           SecretBytes{"IdInFourBytes", std::string("\x11\x27\0\0", 4), "user-2"},
           SecretBytes{"IdInFourBytesBigFirst", std::string("\0\0\x27\x11", 4), "user-2"},
           SecretBytes{"LargestIdAsVarint", "\x99\xfb\xff\xff\xff\xff\xff\xff\xff\x01", "user-1"},
           SecretBytes{"Session", "777123456789", "session-1"},
           SecretBytes{"DeviceInCapitals", "0123456789ABCDEF0123456789abcdef", "device-1"},
           SecretBytes{"DeviceAsItsBytes", "\x01\x23\x45\x67\x89\xab\xcd\xef\x01\x23\x45\x67\x89\xab\xcd\xef",
                       "device-1"},
           SecretBytes{"Token", "s3cret-T0ken", "token-1"},
           SecretBytes{"TokenInUtf16", std::string("S\0003\0c\0r\0e\0t\0-\0T\0000\0k\0e\0n\0", 24), "token-1"},
           SecretBytes{"TokenInUtf16BigFirst", std::string("\0s\0003\0c\0r\0e\0t\0-\0T\0000\0k\0e\0n", 24), "token-1"},
           SecretBytes{"Name", "Zo\xc3\xab Free", "name-1"}, SecretBytes{"NameInCapitals", "ZO\xc3\x8b FREE", "name-1"},
           SecretBytes{"NameForAUrl", "zo%C3%AB+free", "name-1"},
           SecretBytes{"NameInJson", "Zo\\u00eb Free", "name-1"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SecretBytesTest, OtherBytesStayAsTheyAre) {
    const std::string bytes(
        "\xff\x00"
        "110001 \x91\x00 s3cret",
        18);
    See(StoreTrace{true, kOtherUser, "raw", bytes, false, true});

    EXPECT_EQ(ExportedHex(), HexOf(bytes));
}

TEST_F(SecretBytesTest, ASecretAtTheEndOfWhatIsShownIsReplacedWhole) {
    const std::string before = "\xff" + std::string(4090, 'x');
    See(StoreTrace{true, kOtherUser, "raw", before + kToken.toStdString() + "more", false, true});

    EXPECT_EQ(ExportedHex(), HexOf(before) + " token-1 …");
}

TEST_F(SecretBytesTest, OneThatBeginsLaterIsNotShownAtAll) {
    const std::string before = "\xff" + std::string(4095, 'x');
    See(StoreTrace{true, kOtherUser, "raw", before + kToken.toStdString(), false, true});

    EXPECT_EQ(ExportedHex(), HexOf(before) + " …");
}

TEST_F(ExportTest, BodiesThatAreNoSuchMessageAreThereAsHex) {
    See(CommandTrace{CommandTrace::EnKind::Replied, 20982, 1, 0, 1, "\xff\x01" + kName.toStdString(), 20982});

    EXPECT_TRUE(Exported().contains("\"hex\":\"ff 01 name-1\"")) << Exported().constData();
}

TEST_F(ExportTest, ASecretThatThePreviewCutsIsNotShown) {
    See(StoreTrace{true, kOtherUser, "text", std::string(75, 'x') + kToken.toStdString(), false, true});

    const QByteArray json = Exported();
    EXPECT_TRUE(json.contains("xxtoken-1"));
    EXPECT_FALSE(json.contains("xxs3c")) << json.constData();
}

TEST_F(ExportTest, NamesAreFoundHoweverATextWritesThem) {
    for (const char* form :
         {"Zoë Free", "zoë free", "ZOË FREE", "Zo\\u00eb Free", "Zo\\u00EB Free", "Zo%C3%AB%20Free", "zo%c3%ab+free"}) {
        EXPECT_EQ(aliases.Redacted(QStringLiteral("<%1>").arg(QString::fromUtf8(form))), QStringLiteral("<name-1>"))
            << form;
    }
    EXPECT_EQ(aliases.Redacted(QString::fromLatin1(kName.toUtf8())), QStringLiteral("name-1"));
}

TEST_F(ExportTest, WhatIsLearntAgainKeepsItsAlias) {
    aliases.AddSecretNumber(QStringLiteral("user"), kOtherUser);
    aliases.AddSecretText(QStringLiteral("name"), kName);
    aliases.AddSecretText(QStringLiteral("name"), QStringLiteral("Ben"));

    EXPECT_EQ(aliases.Redacted(QStringLiteral("10001, Zoë Free, Ben")), QStringLiteral("user-2, name-1, name-2"));
}

TEST_F(ExportTest, AnIdAfterAnEscapeIsFound) {
    EXPECT_EQ(aliases.Redacted(QStringLiteral("a%2010001 b\\x0a10001 c\\u000a10001 2010001")),
              QStringLiteral("a%20user-2 b\\x0auser-2 c\\u000auser-2 2010001"));
}

TEST_F(ExportTest, HasAListForEachKind) {
    See(UrlTrace{QStringLiteral("https://a.example/"), QString(), 0, 1});
    See(MessageTrace{});
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

TEST_F(ExportTest, TheReasonOfAFailureIsReturned) {
    const QString dev = QStringLiteral("/proc/nothing/x.json");
    EXPECT_EQ(workbench_export::Write(dev, Recorded(), aliases),
              QStringLiteral("The folder /proc/nothing can't be created"));
    EXPECT_TRUE(workbench_export::Write(folder.path(), Recorded(), aliases).startsWith(folder.path()));
}

TEST_F(ExportTest, KeysAreFixedAndTheStateIsRedacted) {
    See(UrlTrace{QStringLiteral("https://a.example/"), QStringLiteral("why"), 0, 1});
    time.Advance(std::chrono::seconds(1));
    workbench_export::Recording recording = Recorded();
    recording.state = QJsonObject{{QStringLiteral("user"), QStringLiteral("Zoë Free (10001)")},
                                  {QStringLiteral("id"), 10001},
                                  {QStringLiteral("ids"), QJsonObject{{QStringLiteral("10001"), true}}}};
    ASSERT_EQ(workbench_export::Write(path, recording, aliases), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject all = QJsonDocument::fromJson(file.readAll()).object();

    EXPECT_EQ(all[QStringLiteral("exported")], QStringLiteral("2023-11-14T22:13:20.123Z"));
    const QJsonObject state{{QStringLiteral("user"), QStringLiteral("name-1 (user-2)")},
                            {QStringLiteral("id"), QStringLiteral("user-2")},
                            {QStringLiteral("ids"), QJsonObject{{QStringLiteral("user-2"), true}}}};
    EXPECT_EQ(all[QStringLiteral("state")].toObject(), state);
    const QJsonObject row = all[QStringLiteral("url")].toArray()[0].toObject();
    EXPECT_EQ(row.keys(), QStringList({QStringLiteral("detail"), QStringLiteral("filters"), QStringLiteral("reason"),
                                       QStringLiteral("result"), QStringLiteral("time"), QStringLiteral("tone"),
                                       QStringLiteral("url")}));
}

TEST_F(ExportTest, AFileIsReadBackAsItsRows) {
    See(StoreTrace{true, kOtherUser, "key", "value", false, false});
    Write(QStringLiteral("[Ad] a line"));
    time.Advance(std::chrono::seconds(1));
    workbench_export::Recording written = Recorded();
    written.state = QJsonObject{{QStringLiteral("edition"), QStringLiteral("Kestrel")}};
    ASSERT_EQ(workbench_export::Write(path, written, aliases), QString());

    workbench_export::Recording read = Recorded();
    ASSERT_EQ(workbench_export::Read(path, read), QString());

    EXPECT_EQ(read.timeMs, written.timeMs);
    EXPECT_EQ(read.state, written.state);
    ASSERT_THAT(read.lists[1].rows, SizeIs(1));
    const EventRow& row = *read.lists[1].rows[0];
    EXPECT_EQ(row.timeMs, store_.At(0).timeMs);
    EXPECT_EQ(row.cells, QStringList({QStringLiteral("Save"), QStringLiteral("user-2"), QStringLiteral("key"),
                                      QStringLiteral("5"), QStringLiteral("Refused"), QString()}));
    EXPECT_EQ(row.choices, store_.At(0).choices);
    EXPECT_EQ(row.tone, EnTone::kBad);
    EXPECT_EQ(row.detail()[1].value, QStringLiteral("value"));
    ASSERT_THAT(read.lists[3].rows, SizeIs(1));
    EXPECT_EQ(read.lists[3].rows[0]->cells, lines.At(0).cells);
    EXPECT_EQ(read.lists[3].rows[0]->choices, lines.At(0).choices);
}

TEST_F(ExportTest, AFileThatIsNoExportIsRefusedWithTheReason) {
    workbench_export::Recording read = Recorded();
    EXPECT_TRUE(workbench_export::Read(path, read).startsWith(path));
    QFile file(folder.filePath(QStringLiteral("other.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"format":"other"})");
    file.close();
    EXPECT_EQ(workbench_export::Read(file.fileName(), read),
              QStringLiteral("%1 is no export of this workbench").arg(file.fileName()));
    for (const char* text : {"{", R"({"format":2.})"}) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        EXPECT_TRUE(workbench_export::Read(file.fileName(), read).contains(QStringLiteral(" is no JSON: "))) << text;
    }
}
