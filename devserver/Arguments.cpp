#include "Arguments.h"

#include <QCommandLineParser>
#include <algorithm>

namespace devserver {
namespace {

const QString kScenario = QStringLiteral("scenario");
const QString kPort = QStringLiteral("port");
const QString kControlPort = QStringLiteral("control-port");
const QString kHttpPort = QStringLiteral("http-port");
const QString kToken = QStringLiteral("token");
const QString kChild = QStringLiteral("child");
const QString kHelp = QStringLiteral("help");

quint16 ReadPort(const QCommandLineParser& parser, const QString& name, Errors& errors) {
    bool isNumber = false;
    const ushort port = parser.value(name).toUShort(&isNumber);
    if (!isNumber) {
        errors.push_back("--" + name.toStdString() + ": must be a whole number from 0 to 65535");
    }
    return port;
}

// HTTP headers carry the token.
std::optional<std::string> ReadToken(const std::string& name, const QString& value, Errors& errors) {
    const bool isVisible = std::all_of(value.begin(), value.end(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
    if (value.isEmpty() || value.size() > 128 || !isVisible) {
        errors.push_back(name + ": must be 1 to 128 visible ASCII characters");
    }
    return value.toStdString();
}

}  // namespace

std::optional<Arguments> ReadArguments(const QStringList& commandLine, const QString& tokenVariable, Errors& errors) {
    const size_t errorsBefore = errors.size();
    const QString zero = QStringLiteral("0");
    QCommandLineParser parser;
    parser.addOptions({
        {kScenario, QStringLiteral("Users, ads and configuration, instead of the built-in ones."),
         QStringLiteral("file")},
        {kPort, QStringLiteral("Port of the command channel. 0 takes any free port."), QStringLiteral("port"), zero},
        {kControlPort, QStringLiteral("Port of the control interface."), QStringLiteral("port"), zero},
        {kHttpPort, QStringLiteral("Port of ads, reports and pictures."), QStringLiteral("port"), zero},
        {kToken, QStringLiteral("Token of clients. By default ZR_DEVSERVER_TOKEN or a random one."),
         QStringLiteral("token")},
        {kChild, QStringLiteral("End when the standard input ends.")},
        {kHelp, QStringLiteral("Print this and end.")},
    });
    if (!parser.parse(commandLine)) {
        errors.push_back(parser.errorText().toStdString());
        return std::nullopt;
    }
    const QStringList positional = parser.positionalArguments();
    for (const QString& argument : positional) {
        errors.push_back(argument.toStdString() + ": unknown argument");
    }
    Arguments arguments;
    if (parser.isSet(kHelp)) {
        arguments.help = parser.helpText();
    }
    if (parser.isSet(kScenario)) {
        arguments.scenario = parser.value(kScenario);
    }
    arguments.port = ReadPort(parser, kPort, errors);
    arguments.controlPort = ReadPort(parser, kControlPort, errors);
    arguments.httpPort = ReadPort(parser, kHttpPort, errors);
    if (parser.isSet(kToken)) {
        arguments.token = ReadToken("--token", parser.value(kToken), errors);
    } else if (!tokenVariable.isEmpty()) {
        arguments.token = ReadToken(kTokenVariable, tokenVariable, errors);
    }
    arguments.child = parser.isSet(kChild);
    return errors.size() == errorsBefore ? std::make_optional(arguments) : std::nullopt;
}

}  // namespace devserver
