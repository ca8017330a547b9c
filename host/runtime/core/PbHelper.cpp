#include "core/pb_helper.h"

#include <google/protobuf/message_lite.h>

namespace core::pb_helper {

bool PBDataToBuf(const google::protobuf::MessageLite* message, std::string& out) {
    return message && message->SerializeToString(&out);
}

bool PBBufToData(const std::string& in, google::protobuf::MessageLite* message) {
    return message && message->ParseFromString(in);
}

}  // namespace core::pb_helper
