#include "Arguments.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::Arguments;
using devserver::Errors;
using devserver::ReadArguments;
using devserver::TakeToken;

QStringList Words(const char* line) {
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

TEST(ArgumentsTest, NothingGivenMeansAnyPortsAndTheBuiltInScenario) {
    Errors errors;
    const auto arguments = ReadArguments({}, errors);

    ASSERT_TRUE(arguments);
    EXPECT_FALSE(arguments->scenario);
    EXPECT_EQ(arguments->port, 0);
    EXPECT_EQ(arguments->controlPort, 0);
    EXPECT_EQ(arguments->httpPort, 0);
    EXPECT_FALSE(arguments->token);
    EXPECT_FALSE(arguments->child);
}

TEST(ArgumentsTest, EachWordIsRead) {
    Errors errors;
    const auto arguments = ReadArguments(
        Words("--child --scenario a.json --port 65535 --control-port 7 --http-port 9 --token T0k"), errors);

    ASSERT_TRUE(arguments);
    EXPECT_EQ(arguments->scenario, QStringLiteral("a.json"));
    EXPECT_EQ(arguments->port, 65535);
    EXPECT_EQ(arguments->controlPort, 7);
    EXPECT_EQ(arguments->httpPort, 9);
    EXPECT_EQ(arguments->token, "T0k");
    EXPECT_TRUE(arguments->child);
}

struct ArgumentRow {
    const char* name;
    const char* line;
    const char* error;
};

class WrongArgumentTest : public testing::TestWithParam<ArgumentRow> {};

TEST_P(WrongArgumentTest, IsNamed) {
    Errors errors;

    EXPECT_FALSE(ReadArguments(Words(GetParam().line), errors));

    EXPECT_THAT(errors, testing::ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WrongArgumentTest,
    testing::Values(
        ArgumentRow{"Unknown", "--prot --child", "--prot: unknown argument"},
        ArgumentRow{"PortTooLarge", "--port 65536", "--port: must be a whole number from 0 to 65535"},
        ArgumentRow{"PortNegative", "--port -1", "--port: must be a whole number from 0 to 65535"},
        ArgumentRow{"HttpPortTooHigh", "--http-port 65536", "--http-port: must be a whole number from 0 to 65535"},
        ArgumentRow{"PortNoNumber", "--control-port x", "--control-port: must be a whole number from 0 to 65535"},
        ArgumentRow{"ValueMissing", "--child --scenario", "--scenario: its value is missing"},
        ArgumentRow{"Twice", "--port 1 --port 2", "--port: given twice"},
        ArgumentRow{"TokenNotAscii", "--token \xc3\xa4", "--token: must be 1 to 128 visible ASCII characters"}),
    RowName());

TEST(ArgumentsTest, AllErrorsAreToldAtOnce) {
    Errors errors;

    EXPECT_FALSE(ReadArguments(Words("--port x --control-port y"), errors));

    EXPECT_EQ(errors.size(), 2u);
}

TEST(ArgumentsTest, TheTokenMayComeFromTheEnvironmentWhereTheLineHasNone) {
    Errors errors;
    Arguments arguments;

    EXPECT_TRUE(TakeToken(arguments, QString(), errors));
    EXPECT_FALSE(arguments.token);
    EXPECT_TRUE(TakeToken(arguments, QStringLiteral("T0k"), errors));
    EXPECT_EQ(arguments.token, "T0k");
    EXPECT_TRUE(TakeToken(arguments, QStringLiteral("other"), errors));
    EXPECT_EQ(arguments.token, "T0k");
}

TEST(ArgumentsTest, ATokenFromTheEnvironmentThatIsNoneIsRefused) {
    Errors errors;
    Arguments arguments;

    EXPECT_FALSE(TakeToken(arguments, QStringLiteral("two words"), errors));
    EXPECT_EQ(errors, Errors{"ZR_DEVSERVER_TOKEN: must be 1 to 128 visible ASCII characters"});
}

}  // namespace
