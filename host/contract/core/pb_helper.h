#pragma once

#include <string>

#include "framework/export.h"

namespace google {
namespace protobuf {
class MessageLite;
}
}  // namespace google

namespace core {

/// Messages to bytes and back. Callable from any thread. A null message gives false.
namespace pb_helper {

/// Serialises into `out`, which is replaced. False if the message cannot be written.
ZRHOST_API bool PBDataToBuf(const google::protobuf::MessageLite* message, std::string& out);

/// Parses into `message`, which is cleared first. False on bytes that are no such message; what the
/// message then holds is not to be used.
ZRHOST_API bool PBBufToData(const std::string& in, google::protobuf::MessageLite* message);

}  // namespace pb_helper
}  // namespace core
