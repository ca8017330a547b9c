#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "workbench/FieldNode.h"

/// Decodes messages by schemas that are embedded as data. Generated code would duplicate the module's types in the same
/// descriptor pool. Main thread.
class CWireDecoder {
public:
    CWireDecoder();
    ~CWireDecoder();
    CWireDecoder(const CWireDecoder&) = delete;
    CWireDecoder& operator=(const CWireDecoder&) = delete;

    /// The name of `number` in the schemas' enumeration `type`; empty if it has none.
    QString EnumName(const std::string& type, int number) const;

    /// Returns the set fields in order of number, followed by unknown fields. Malformed bytes and unknown types return
    /// one raw node.
    std::vector<FieldNode> Decode(const std::string& type, const std::string& bytes) const;

private:
    struct Schemas;
    std::unique_ptr<Schemas> m_schemas;
};

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
QString MessageName(unsigned int messageId);

}  // namespace wire
