#include "ClientTexts.h"

#include <QFile>
#include <QRegularExpression>

#include "core/Language.h"
#include "pages/SampleTable.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

using Pack = QHash<unsigned int, QString>;

Pack ReadPack(const char* name) {
    const CLanguage makesTheResourceReady(core::lang::kLanguageEnglish);
    QFile file(QStringLiteral(":/lang/%1.json").arg(QString::fromLatin1(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    Pack pack;
    std::string error;
    EXPECT_TRUE(CLanguage::ReadPack(file.readAll().toStdString(), pack, error)) << name << ": " << error;
    return pack;
}

std::vector<unsigned int> Ids(const Pack& pack) {
    std::vector<unsigned int> ids(pack.keyBegin(), pack.keyEnd());
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<std::string> Placeholders(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("%\\d"));
    std::vector<std::string> found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        found.push_back(matches.next().captured().toStdString());
    }
    std::sort(found.begin(), found.end());
    return found;
}

class LanguagePackTest : public ScriptedHostTest, public WithParamInterface<const char*> {};

class ClientTextsTest : public ScriptedHostTest {};

std::string PackName(const TestParamInfo<const char*>& info) {
    return QString::fromLatin1(info.param).remove(QLatin1Char('-')).toStdString();
}

}  // namespace

TEST_P(LanguagePackTest, HasTheSameTextsAsEnglish) {
    EXPECT_THAT(Ids(ReadPack(GetParam())), ElementsAreArray(Ids(ReadPack("en"))));
}

TEST_P(LanguagePackTest, HasAllTextsOfTheClientWithTheirPlaceholders) {
    const Pack pack = ReadPack(GetParam());
    for (const texts::TextEntry& text : texts::All()) {
        EXPECT_FALSE(pack.value(text.id).trimmed().isEmpty()) << text.id;
        EXPECT_EQ(Placeholders(pack.value(text.id)), Placeholders(QString::fromUtf8(text.english))) << text.id;
    }
}

INSTANTIATE_TEST_SUITE_P(OtherThanEnglish, LanguagePackTest, Values("zh-Hans", "zh-Hant", "ja", "fr"), PackName);

TEST_F(ClientTextsTest, TheEnglishPackSaysWhatTheClientSaysWithoutIt) {
    const Pack pack = ReadPack("en");
    for (const texts::TextEntry& text : texts::All()) {
        EXPECT_EQ(pack.value(text.id).toStdString(), text.english) << text.id;
    }
}

TEST_F(ClientTextsTest, NoIdIsThereTwice) {
    std::set<unsigned int> ids;
    for (const texts::TextEntry& text : texts::All()) {
        EXPECT_TRUE(ids.insert(text.id).second) << text.id;
        EXPECT_GE(text.id, 900001u);
    }
}

TEST_F(ClientTextsTest, AKeptTextIsShownAnewWhenTheLanguageChanges) {
    std::vector<QString> shown;
    auto context = std::make_unique<QObject>();
    texts::Keep(context.get(), [&shown] { shown.push_back(texts::Tr(texts::kNews)); });

    language.SetText(texts::kNews, QStringLiteral("Actualités"));
    bus.HostSend(20100);
    context.reset();
    bus.HostSend(20100);

    EXPECT_THAT(shown, ElementsAre(QStringLiteral("News"), QStringLiteral("Actualités")));
}

TEST_F(ClientTextsTest, ATablesWordsAreInTheLanguageOfTheMomentAndItsNamesStay) {
    CSampleTable table("Table", {{texts::kName, false}, {texts::kSide, false}}, 0);
    table.AddRow({{QStringLiteral("Alder")}, {QString(), theme::kUp, texts::kBuy}});
    EXPECT_EQ(table.item(0, 1)->text(), QStringLiteral("Buy"));

    language.SetText(texts::kBuy, QStringLiteral("Achat"));
    bus.HostSend(20100);

    EXPECT_EQ(table.item(0, 0)->text(), QStringLiteral("Alder"));
    EXPECT_EQ(table.item(0, 1)->text(), QStringLiteral("Achat"));
}
