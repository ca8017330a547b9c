#include "Translation.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <cstdlib>

#include "core/lang.h"
#include "pages/SampleTable.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

struct TsMessage {
    std::string context;
    std::string source;
    std::string translation;
    std::string type;  // empty: finished
};

QByteArray Read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

std::vector<TsMessage> Messages(const QByteArray& ts) {
    std::vector<TsMessage> messages;
    QXmlStreamReader xml(ts);
    std::string context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText().toStdString();
        } else if (xml.name() == QLatin1String("source")) {
            messages.push_back({context, xml.readElementText().toStdString(), {}, {}});
        } else if (xml.name() == QLatin1String("translation")) {
            messages.back().type = xml.attributes().value(QLatin1String("type")).toString().toStdString();
            messages.back().translation = xml.readElementText().toStdString();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return messages;
}

std::set<std::string> Sources(const QByteArray& ts) {
    std::set<std::string> sources;
    for (const TsMessage& message : Messages(ts)) {
        sources.insert(message.context + ": " + message.source);
    }
    return sources;
}

std::vector<std::string> Placeholders(const std::string& text) {
    static const QRegularExpression pattern(QStringLiteral("%\\d"));
    std::vector<std::string> found;
    auto matches = pattern.globalMatch(QString::fromStdString(text));
    while (matches.hasNext()) {
        found.push_back(matches.next().captured().toStdString());
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// Copies the sources without digit separators, because lupdate parses them as character literals.
void CopySources(const QString& from, const QString& to) {
    static const QRegularExpression separator(QStringLiteral("(?<=[0-9a-fA-F])'(?=[0-9a-fA-F])"));
    QDirIterator files(from, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = to + QDir(from).relativeFilePath(files.next()).prepend(QLatin1Char('/'));
        QDir().mkpath(QFileInfo(path).path());
        QFile copy(path);
        ASSERT_TRUE(copy.open(QIODevice::WriteOnly)) << path.toStdString();
        copy.write(QString::fromUtf8(Read(files.filePath())).remove(separator).toUtf8());
    }
}

class TranslationFileTest : public TestWithParam<const char*> {
protected:
    QByteArray File() const {
        return Read(
            QStringLiteral(ZR_CLIENT_SOURCES "/translations/zrclient_%1.ts").arg(QString::fromLatin1(GetParam())));
    }
};

class TranslationTest : public ScriptedHostTest {
protected:
    void Show(int languageId) {
        translation.SetLanguage(languageId);
        bus.HostSend(20100);
    }

    CTranslation translation{core::lang::kLanguageEnglish};
};

std::string LanguageName(const TestParamInfo<const char*>& info) {
    return QString::fromLatin1(info.param).remove(QLatin1Char('_')).toStdString();
}

}  // namespace

TEST_P(TranslationFileTest, HoldsTheTextsOfTheSourcesAndNoOthers) {
    const QTemporaryDir folder;
    CopySources(QStringLiteral(ZR_CLIENT_SOURCES), folder.filePath(QStringLiteral("client")));
    const QString found = folder.filePath(QStringLiteral("found.ts"));
    const QString errors = folder.filePath(QStringLiteral("errors"));

    // QProcess opens a socket, which is not possible in virtual time.
    const int status = std::system(QStringLiteral(ZR_LUPDATE " -silent '%1/client' -ts '%2' 2> '%3'")
                                       .arg(folder.path(), found, errors)
                                       .toLocal8Bit());

    ASSERT_EQ(status, 0);
    EXPECT_EQ(Read(errors).toStdString(), "");
    EXPECT_THAT(Sources(File()), ContainerEq(Sources(Read(found))));
    EXPECT_THAT(Sources(Read(found)), Contains("CUserMenu: Log out"));
}

TEST_P(TranslationFileTest, TranslatesEachTextWithItsPlaceholders) {
    for (const TsMessage& message : Messages(File())) {
        EXPECT_EQ(message.type, "") << message.source;
        EXPECT_NE(message.translation, "") << message.source;
        EXPECT_EQ(Placeholders(message.translation), Placeholders(message.source)) << message.source;
    }
}

TEST_P(TranslationFileTest, UsesThePunctuationOfChineseAndJapanese) {
    static const QRegularExpression western(QStringLiteral(
        "[\\x{3040}-\\x{30ff}\\x{4e00}-\\x{9fff}][,.;:!?()]|[,;:!?()][\\x{3040}-\\x{30ff}\\x{4e00}-\\x{9fff}]"));
    for (const TsMessage& message : Messages(File())) {
        EXPECT_FALSE(QString::fromStdString(message.translation).contains(western)) << message.translation;
    }
}

INSTANTIATE_TEST_SUITE_P(OtherThanEnglish, TranslationFileTest, Values("zh_Hans", "zh_Hant", "ja", "fr"), LanguageName);

TEST_F(TranslationTest, ShowsTheSourceTextInEnglishAndForUnknownNumbers) {
    Show(core::lang::kLanguageFrench);
    for (const int languageId : {int(core::lang::kLanguageEnglish), 3, -1, 99}) {
        Show(languageId);
        EXPECT_EQ(translation::PageText("News"), QStringLiteral("News")) << languageId;
    }
}

TEST_F(TranslationTest, ShowsEachLanguageItsOwnTexts) {
    std::vector<std::string> shown;
    for (const int languageId : {core::lang::kLanguageSimplifiedChinese, core::lang::kLanguageTraditionalChinese,
                                 core::lang::kLanguageJapanese, core::lang::kLanguageFrench}) {
        Show(languageId);
        shown.push_back(translation::PageText("Watchlist").toStdString());
    }
    EXPECT_THAT(shown, ElementsAre("自选", "自選", "ウォッチリスト", "Favoris"));
}

TEST_F(TranslationTest, ShowsATextAgainWhenTheLanguageChanges) {
    std::vector<std::string> shown;
    auto context = std::make_unique<QObject>();
    translation::OnLanguageChange(context.get(),
                                  [&shown] { shown.push_back(translation::PageText("News").toStdString()); });

    Show(core::lang::kLanguageFrench);
    context.reset();
    Show(core::lang::kLanguageEnglish);

    EXPECT_THAT(shown, ElementsAre("News", "Actualités"));
}

TEST_F(TranslationTest, LeavesTheNamesOfATableAndTranslatesItsWords) {
    CSampleTable table("Table", {{"Name", false}, {"Side", false}}, 0);
    table.AddRow({{QStringLiteral("Alder")}, {QString(), theme::kUp, "Buy"}});
    EXPECT_EQ(table.item(0, 1)->text(), QStringLiteral("Buy"));

    Show(core::lang::kLanguageFrench);

    EXPECT_EQ(table.item(0, 0)->text(), QStringLiteral("Alder"));
    EXPECT_EQ(table.item(0, 1)->text(), QStringLiteral("Achat"));
    EXPECT_EQ(table.horizontalHeaderItem(0)->text(), QStringLiteral("Nom"));
}
