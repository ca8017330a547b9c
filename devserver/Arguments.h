#pragma once

#include <QStringList>
#include <optional>
#include <string>

#include "JsonMessage.h"

namespace devserver {

struct Arguments {
    std::optional<QString> scenario;  // file; the built-in scenario without it
    quint16 port = 0;                 // of the channel; 0 for any
    quint16 controlPort = 0;
    quint16 httpPort = 0;
    std::optional<std::string> token;  // random without it
    bool child = false;
    std::optional<QString> help;  // text to print instead of a start
};

/// Environment variable that may hold the token: all users of the machine can read a command line.
constexpr const char* kTokenVariable = "ZR_DEVSERVER_TOKEN";

/// Reads the command line, program name included. `tokenVariable` is the value of kTokenVariable. It applies if it is
/// not empty and the command line has no token. Returns nothing, with at least one error, if an argument is invalid.
std::optional<Arguments> ReadArguments(const QStringList& commandLine, const QString& tokenVariable, Errors& errors);

}  // namespace devserver
