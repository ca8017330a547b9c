// The texts that the module requests from the language packs, by their ids.
#include <QFile>
#include <QRegularExpression>

#include "core/Language.h"
#include "core/lang.h"
#include "core/langx.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

struct ModuleText {
    unsigned int id;
    const char* what;
};

constexpr ModuleText kModuleTexts[] = {
    {277229, "UnitOfOneDay"},
    {277228, "UnitOfAnyOtherNumberOfDays"},
    {292250, "ToastThatTheRightIsActivated"},
    {292248, "ToastThatTheActivationFailed"},
    {362209, "MenuEntryOfTheNewMembership"},
    {310783, "MenuEntryOfTheLegacyMembership"},
    {361769, "PillOfAMember"},
    {361768, "PillOfSomebodyWithoutMembership"},
    {299180, "ChatWindowTitleInVelora"},
    {291435, "ChatWindowTitleInKestrel"},
    {320268, "ChatTitleBarInVelora"},
    {320267, "ChatTitleBarInKestrel"},
};

constexpr int kLanguages[] = {
    core::lang::kLanguageEnglish,
    core::lang::kLanguageSimplifiedChinese,
    core::lang::kLanguageTraditionalChinese,
    core::lang::kLanguageJapanese,
    core::lang::kLanguageFrench,
};

std::string WhatItSays(const TestParamInfo<ModuleText>& info) {
    return info.param.what;
}

class ModuleTextTest : public ScriptedHostTest, public WithParamInterface<ModuleText> {};

class ModuleTextsTest : public ScriptedHostTest {
protected:
    static QString Text(int language, unsigned int id) { return CLanguage(language).Text(id).value_or(QString()); }

    static QHash<unsigned int, QString> Pack(const char* name) {
        const CLanguage makesTheResourceReady(core::lang::kLanguageEnglish);
        QFile file(QStringLiteral(":/lang/%1.json").arg(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        QHash<unsigned int, QString> texts;
        std::string error;
        EXPECT_TRUE(CLanguage::ReadPack(file.readAll().toStdString(), texts, error)) << name << ": " << error;
        return texts;
    }
};

}  // namespace

TEST_P(ModuleTextTest, IsInEveryPackWithoutFieldsOrMarkup) {
    static const QRegularExpression odd(QStringLiteral("%\\d|[<>&\\n]|^\\s|\\s$"));
    for (const int id : kLanguages) {
        const auto text = CLanguage(id).Text(GetParam().id);
        ASSERT_TRUE(text) << id;
        EXPECT_FALSE(text->isEmpty()) << id;
        EXPECT_FALSE(text->contains(odd)) << id << ": " << text->toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(All, ModuleTextTest, ValuesIn(kModuleTexts), WhatItSays);

// The host's own texts have numbers from 900001.
TEST_F(ModuleTextsTest, EachPackHasTheTextsOfModuleAndHostAlone) {
    std::vector<unsigned int> known;
    for (unsigned int id = 900001; id <= 900016; ++id) {
        known.push_back(id);
    }
    for (const ModuleText& text : kModuleTexts) {
        known.push_back(text.id);
    }
    for (const char* name : {"en", "zh-Hans", "zh-Hant", "ja", "fr"}) {
        EXPECT_THAT(Pack(name).keys().toVector(), UnorderedElementsAreArray(known)) << name;
    }
}

TEST_F(ModuleTextsTest, OneDayIsSingularWhereTheLanguageHasOne) {
    EXPECT_EQ(Text(core::lang::kLanguageEnglish, 277229), QStringLiteral("\u00A0day"));
    EXPECT_EQ(Text(core::lang::kLanguageEnglish, 277228), QStringLiteral("\u00A0days"));
    EXPECT_EQ(Text(core::lang::kLanguageFrench, 277229), QStringLiteral("\u00A0jour"));
    EXPECT_EQ(Text(core::lang::kLanguageFrench, 277228), QStringLiteral("\u00A0jours"));
    for (const unsigned int unit : {277229u, 277228u}) {
        EXPECT_EQ(Text(core::lang::kLanguageSimplifiedChinese, unit), QStringLiteral("天"));
        EXPECT_EQ(Text(core::lang::kLanguageTraditionalChinese, unit), QStringLiteral("天"));
        EXPECT_EQ(Text(core::lang::kLanguageJapanese, unit), QStringLiteral("日"));
    }
}

TEST_F(ModuleTextsTest, BrandsAreNotTranslated) {
    for (const int id : kLanguages) {
        for (const unsigned int title : {299180u, 320268u}) {
            EXPECT_EQ(Text(id, title), QStringLiteral("Velora AI"));
        }
        for (const unsigned int title : {291435u, 320267u}) {
            EXPECT_EQ(Text(id, title), QStringLiteral("KestrelAI"));
        }
    }
}

TEST_F(ModuleTextsTest, ChineseAndJapaneseKeepToTheirOwnPunctuation) {
    static const QRegularExpression western(QStringLiteral(
        "[\\x{3040}-\\x{30ff}\\x{4e00}-\\x{9fff}][,.;:!?()]|[,;:!?()][\\x{3040}-\\x{30ff}\\x{4e00}-\\x{9fff}]"));
    for (const char* pack : {"zh-Hans", "zh-Hant", "ja"}) {
        const QHash<unsigned int, QString> texts = Pack(pack);
        for (auto text = texts.constBegin(); text != texts.constEnd(); ++text) {
            EXPECT_FALSE(text->contains(western)) << pack << " " << text.key() << ": " << text->toStdString();
        }
    }
}
