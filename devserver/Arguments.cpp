#include "Arguments.h"

#include <QSet>
#include <algorithm>

namespace devserver {
namespace {

quint16 ReadPort(const QString& name, const QString& value, Errors& errors) {
    bool isNumber = false;
    const ushort port = value.toUShort(&isNumber);
    if (!isNumber) {
        errors.push_back(name.toStdString() + ": must be a whole number from 0 to 65535");
    }
    return port;
}

// The token travels in headers.
std::string ReadToken(const QString& name, const QString& value, Errors& errors) {
    const bool visible = std::all_of(value.begin(), value.end(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
    if (value.isEmpty() || value.size() > 128 || !visible) {
        errors.push_back(name.toStdString() + ": must be 1 to 128 visible ASCII characters");
    }
    return value.toStdString();
}

}  // namespace

const char* const kTokenVariable = "ZR_DEVSERVER_TOKEN";

bool TakeToken(Arguments& arguments, const QString& value, Errors& errors) {
    if (arguments.token || value.isEmpty()) {
        return true;
    }
    const size_t errorsBefore = errors.size();
    arguments.token = ReadToken(QString::fromLatin1(kTokenVariable), value, errors);
    return errors.size() == errorsBefore;
}

const char* const kUsage =
    "usage: zrdevserver [--scenario FILE] [--port N] [--control-port N] [--http-port N] [--token T] [--child]\n"
    "  --scenario FILE   users and configuration, instead of the built-in ones\n"
    "  --port N          of the command channel; 0, the default, takes any free one\n"
    "  --control-port N  of the control interface; as above\n"
    "  --http-port N     of ads, reports and pictures; as above\n"
    "  --token T         that clients must show; without it the value of ZR_DEVSERVER_TOKEN, or a random one\n"
    "  --child           end when the standard input ends\n";

std::optional<Arguments> ReadArguments(const QStringList& words, Errors& errors) {
    const size_t errorsBefore = errors.size();
    Arguments arguments;
    QSet<QString> seen;
    for (int i = 0; i < words.size(); ++i) {
        const QString& name = words[i];
        if (seen.contains(name)) {
            errors.push_back(name.toStdString() + ": given twice");
        }
        seen.insert(name);
        if (name == QLatin1String("--child")) {
            arguments.child = true;
            continue;
        }
        if (name == QLatin1String("--help")) {
            arguments.help = true;
            continue;
        }
        const QStringList withValue{QStringLiteral("--scenario"), QStringLiteral("--port"),
                                    QStringLiteral("--control-port"), QStringLiteral("--http-port"),
                                    QStringLiteral("--token")};
        if (!withValue.contains(name)) {
            errors.push_back(name.toStdString() + ": unknown argument");
            continue;
        }
        if (++i == words.size()) {
            errors.push_back(name.toStdString() + ": its value is missing");
            break;
        }
        const QString& value = words[i];
        if (name == QLatin1String("--scenario")) {
            arguments.scenario = value;
        } else if (name == QLatin1String("--port")) {
            arguments.port = ReadPort(name, value, errors);
        } else if (name == QLatin1String("--control-port")) {
            arguments.controlPort = ReadPort(name, value, errors);
        } else if (name == QLatin1String("--http-port")) {
            arguments.httpPort = ReadPort(name, value, errors);
        } else {
            arguments.token = ReadToken(name, value, errors);
        }
    }
    if (errors.size() != errorsBefore) {
        return std::nullopt;
    }
    return arguments;
}

}  // namespace devserver
