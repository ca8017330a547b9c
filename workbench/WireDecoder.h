#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/FieldNode.h"

/// Decodes messages by schemas that are embedded as data. Generated code would duplicate the module's types in the same
/// descriptor pool. Callable from any thread.
namespace wire {

/// Returns the set fields in order of number, followed by unknown fields. Malformed bytes and unknown types return one
/// raw node.
std::vector<FieldNode> Decode(const std::string& type, const std::string& bytes);

/// The name of `number` in the schemas' enumeration `type`; empty if it has none.
QString EnumName(const std::string& type, int number);

/// A row of the table of commands and bus messages. A new one needs a row there and nowhere else.
struct Command {
    uint32_t number;
    const char* name;
    const char* request = nullptr;  // message types of the schemas; null if there is none
    const char* reply = nullptr;
    const char* push = nullptr;
};

const std::vector<Command>& Commands();

/// Returns an empty name and no types for an unknown number.
const Command& Find(uint32_t number);

}  // namespace wire
