#pragma once

#include <QString>
#include <cstdint>
#include <vector>

/// The table of commands and bus messages. A new command or message needs a row here and nowhere else.
namespace wire {

struct Command {
    uint32_t number;
    const char* name;
    const char* request;  // message types of the schemas; null if there is none
    const char* reply;
    const char* push;
};

const std::vector<Command>& Commands();

/// Null if the number is unknown.
const Command* Find(uint32_t number);

/// Empty if the number is unknown.
QString CommandName(uint32_t number);
QString MessageName(unsigned int messageId);

}  // namespace wire
