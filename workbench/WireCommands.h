#pragma once

#include <QString>
#include <cstdint>
#include <vector>

/// What is known of the numbers on the wire and on the bus: the one table that a new command or message is
/// written into.
namespace wire {

struct Command {
    uint32_t number;
    const char* name;
    const char* request;  // message types of the schemas; null where there is none
    const char* reply;
    const char* push;
};

const std::vector<Command>& Commands();

/// Null if the table does not have it.
const Command* Find(uint32_t number);

/// Empty if the table does not have it.
QString CommandName(uint32_t number);
QString MessageName(unsigned int messageId);

}  // namespace wire
