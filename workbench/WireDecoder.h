#pragma once

#include <memory>
#include <string>
#include <vector>

#include "workbench/FieldNode.h"

/// Reads messages by the schemas, which it carries as data: generated code would be a second copy of what the
/// module brings, and the two would meet in one pool. Main thread.
class CWireDecoder {
public:
    CWireDecoder();
    ~CWireDecoder();
    CWireDecoder(const CWireDecoder&) = delete;
    CWireDecoder& operator=(const CWireDecoder&) = delete;

    bool Knows(const std::string& type) const;

    /// The name that the schemas' enumeration gives a number; empty if it gives none.
    QString EnumName(const std::string& type, int number) const;

    /// The fields that the bytes set, in order of number, then those that the schema does not know. Bytes that
    /// are no such message, and all bytes of a type that is unknown, come as one raw node.
    std::vector<FieldNode> Decode(const std::string& type, const std::string& bytes) const;

private:
    struct Schemas;
    std::unique_ptr<Schemas> m_schemas;
};
