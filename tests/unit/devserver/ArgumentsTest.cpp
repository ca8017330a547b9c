#include "Arguments.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::Arguments;
using devserver::Errors;

/// Reads the arguments of a line, as split at its blanks.
std::optional<Arguments> Read(const char* line, Errors& errors, const QString& tokenVariable = {}) {
    return devserver::ReadArguments(
        QStringLiteral("zrdevserver %1").arg(QString::fromUtf8(line)).split(QLatin1Char(' '), Qt::SkipEmptyParts),
        tokenVariable, errors);
}

TEST(ArgumentsTest, NothingGivenMeansAnyPortsAndTheBuiltInScenario) {
    Errors errors;
    const auto arguments = Read("", errors);

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
    const auto arguments =
        Read("--child --scenario a.json --port 65535 --control-port 7 --http-port=9 --token T0k", errors);

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

    EXPECT_FALSE(Read(GetParam().line, errors));

    EXPECT_THAT(errors, testing::ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WrongArgumentTest,
    testing::Values(
        ArgumentRow{"Unknown", "--prot --child", "Unknown option 'prot'."},
        ArgumentRow{"PortTooLarge", "--port 65536", "--port: must be a whole number from 0 to 65535"},
        ArgumentRow{"PortNegative", "--port -1", "--port: must be a whole number from 0 to 65535"},
        ArgumentRow{"HttpPortTooHigh", "--http-port 65536", "--http-port: must be a whole number from 0 to 65535"},
        ArgumentRow{"PortNoNumber", "--control-port x", "--control-port: must be a whole number from 0 to 65535"},
        ArgumentRow{"ValueMissing", "--child --scenario", "Missing value after '--scenario'."},
        ArgumentRow{"NoOption", "--child port", "port: unknown argument"},
        ArgumentRow{"TokenNotAscii", "--token \xc3\xa4", "--token: must be 1 to 128 visible ASCII characters"}),
    RowName());

TEST(ArgumentsTest, AllErrorsAreToldAtOnce) {
    Errors errors;

    EXPECT_FALSE(Read("--port x --control-port y", errors));

    EXPECT_EQ(errors.size(), 2u);
}

TEST(ArgumentsTest, TokenComesFromTheEnvironmentWhenTheLineHasNone) {
    Errors errors;

    EXPECT_EQ(Read("", errors, QStringLiteral("T0k"))->token, "T0k");
    EXPECT_EQ(Read("--token other", errors, QStringLiteral("T0k"))->token, "other");
    EXPECT_EQ(Read("--token other", errors, QStringLiteral("two words"))->token, "other");
}

TEST(ArgumentsTest, TokenOfTheEnvironmentIsCheckedAsWell) {
    Errors errors;

    EXPECT_FALSE(Read("", errors, QStringLiteral("two words")));

    EXPECT_EQ(errors, Errors{"ZR_DEVSERVER_TOKEN: must be 1 to 128 visible ASCII characters"});
}

TEST(ArgumentsTest, HelpNamesEveryOption) {
    Errors errors;

    const auto arguments = Read("--help", errors);

    ASSERT_TRUE(arguments && arguments->help);
    for (const char* option : {"--scenario", "--port", "--control-port", "--http-port", "--token", "--child"}) {
        EXPECT_THAT(arguments->help->toStdString(), testing::HasSubstr(option));
    }
}

}  // namespace
