#include "framework/LogText.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

TEST(LogTextTest, PlainTextOfAnyLanguageStaysAsItIs) {
    EXPECT_EQ(host::EscapedLogText(QString::fromUtf8("a \"b\" \\ \xE6\x97\xA5")), "a \"b\" \\ \xE6\x97\xA5");
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

}  // namespace
