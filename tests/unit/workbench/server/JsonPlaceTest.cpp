#include "workbench/server/JsonPlace.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

const QString kText = QStringLiteral(R"({"name": "é日",
 "users": [{"id": 1}, {"id": 22, "premium": {"rights": [3, 44]}}]})");

QString At(const char* path) {
    const auto place = json_place::AtKey(kText, QString::fromLatin1(path));
    return place ? kText.mid(place->start, place->length) : QStringLiteral("none");
}

QString OfError(const QString& text, const char* error) {
    const auto place = json_place::OfError(text, QString::fromLatin1(error));
    return place ? QStringLiteral("%1 ").arg(place->start) + text.mid(place->start, place->length)
                 : QStringLiteral("none");
}

}  // namespace

TEST(JsonPlaceTest, KeyPathLeadsToItsValue) {
    EXPECT_EQ(At("users[1].id"), QStringLiteral("22"));
    EXPECT_EQ(At("users[1].premium.rights[1]"), QStringLiteral("44"));
    EXPECT_EQ(At("name"), QStringLiteral("\"é日\""));
}

TEST(JsonPlaceTest, PathThatEndsEarlyLeadsToTheInnermostValue) {
    EXPECT_EQ(At("users[0].name"), QStringLiteral(R"({"id": 1})"));
    EXPECT_EQ(At("users[9].name"), QStringLiteral(R"([{"id": 1}, {"id": 22, "premium": {"rights": [3, 44]}}])"));
    EXPECT_EQ(At("nothing"), kText);
    EXPECT_EQ(At("name.first[1]"), QStringLiteral("\"é日\""));
    EXPECT_EQ(At("[0]"), kText);
    EXPECT_EQ(At("user"), kText);
    EXPECT_EQ(At("users.x"), At("users"));
}

TEST(JsonPlaceTest, ErrorLeadsToItsKeyOrToItsLineAndColumn) {
    EXPECT_EQ(OfError(kText, "users[1].id: must be: a number").section(QLatin1Char(' '), 1), QStringLiteral("22"));
    EXPECT_EQ(OfError(QStringLiteral("{\n \"é\": x}"), "not JSON: * Line 2, Column 8 Syntax error"),
              QStringLiteral("8 x"));
    EXPECT_EQ(OfError(QStringLiteral("{"), "not JSON: * Line 9, Column 70 Missing"), QStringLiteral("1 "));
    EXPECT_EQ(OfError(QStringLiteral("{"), "users: missing"), QStringLiteral("none"));
}
