#pragma once

#include <QStringList>
#include <optional>
#include <string>

#include "JsonNode.h"

namespace devserver {

struct Arguments {
    std::optional<QString> scenario;  // a file; the scenario that is built in without it
    quint16 port = 0;                 // of the channel; 0 for any
    quint16 controlPort = 0;
    quint16 httpPort = 0;
    std::optional<std::string> token;  // a random one without it
    bool child = false;
    bool help = false;
};

/// How to call the program, in lines.
extern const char* const kUsage;

/// The command line without the program's name, or nothing and at least one error.
std::optional<Arguments> ReadArguments(const QStringList& words, Errors& errors);

/// The environment variable that may carry the token instead: a command line is for everybody to read.
extern const char* const kTokenVariable;

/// Takes the token from the variable's value where the command line has none. False, and an error, on one
/// that is no token; an empty value is none at all.
bool TakeToken(Arguments& arguments, const QString& value, Errors& errors);

}  // namespace devserver
