#include "framework/LogText.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

TEST(LogTextTest, PlainTextOfAnyLanguageStaysAsItIs) {
    EXPECT_EQ(host::EscapedLogText(QString::fromUtf8("a \"b\" \\ \xE6\x97\xA5")), "a \"b\" \\ \xE6\x97\xA5");
}

TEST(LogTextTest, TextBetweenEscapedCharactersIsKept) {
    EXPECT_EQ(host::EscapedLogText(QString::fromUtf8("\n\nab\xC3\xA9\ncd\n")), "\\x0a\\x0aab\xC3\xA9\\x0acd\\x0a");
}

TEST(LogTextTest, ControlCharactersCantForgeALine) {
    EXPECT_EQ(host::EscapedLogText(QStringLiteral("one\r\ntwo\t\x1B[31m\x7F")), "one\\x0d\\x0atwo\\x09\\x1b[31m\\x7f");
}

TEST(LogTextTest, BytesOfTheUpperControlRangeAndZeroBytesAreEscaped) {
    EXPECT_EQ(host::EscapedLogText(QString::fromLatin1("\x85\x9F\x00\xA0", 4)), "\\x85\\x9f\\x00\xC2\xA0");
}

TEST(LogTextTest, LineSeparatorsAndMarksOfDirectionAreEscaped) {
    const QString text = QStringLiteral("a") + QChar(0x2028) + QChar(0x2029) + QChar(0x202E) + QChar(0x2066);

    EXPECT_EQ(host::EscapedLogText(text), "a\\u2028\\u2029\\u202e\\u2066");
}

TEST(LogTextTest, FormatCharactersOfAllPlanesAreEscaped) {
    const char32_t text[] = {0xAD,   0x061C, 0x180E,  0x200B,  0x200D,  0x2060, 0x206F,
                             0xFEFF, 0xFFF9, 0x110BD, 0x1D173, 0xE0001, 0xE007F};

    EXPECT_EQ(
        host::EscapedLogText(QString::fromUcs4(text, int(std::size(text)))),
        "\\xad\\u061c\\u180e\\u200b\\u200d\\u2060\\u206f\\ufeff\\ufff9\\U000110bd\\U0001d173\\U000e0001\\U000e007f");
}

TEST(LogTextTest, PicturesAndLettersOfAllPlanesStayAsTheyAre) {
    const std::string text = "\xF0\x9F\x98\x80\xEF\xB8\x8F\xF0\xA0\x80\x8B";

    EXPECT_EQ(host::EscapedLogText(QString::fromStdString(text)), text);
}

}  // namespace
