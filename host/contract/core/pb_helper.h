#pragma once

#include <string>

#include "framework/export.h"

namespace google {
namespace protobuf {
class MessageLite;
}
}  // namespace google

namespace core {

/// Serialises and parses protobuf messages.
/// Thread: any.
/// Failure: a null message returns false.
namespace pb_helper {

/// Serialises `message` and replaces `out`.
/// Returns whether the message was written.
ZRHOST_API bool PBDataToBuf(const google::protobuf::MessageLite* message, std::string& out);

/// Clears `message`, then parses `in` into it.
/// Returns whether the bytes are such a message.
/// Failure: after false the content of `message` is undefined.
ZRHOST_API bool PBBufToData(const std::string& in, google::protobuf::MessageLite* message);

}  // namespace pb_helper
}  // namespace core
