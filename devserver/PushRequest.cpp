#include "PushRequest.h"

#include <vector>

#include "Digits.h"
#include "scenario.pb.h"

namespace devserver {

std::optional<Push> ReadPush(const std::string& text, Errors& errors) {
    const auto request = ReadText<PushRequest>(text, errors);
    if (!request) {
        return std::nullopt;
    }
    const auto& reflection = *request->GetReflection();
    std::vector<const google::protobuf::FieldDescriptor*> fields;
    reflection.ListFields(*request, &fields);
    Push push{request->has_user() ? std::make_optional(request->user()) : std::nullopt, request->command(), {}};
    int bodies = 0;
    for (const auto* field : fields) {
        if (field->message_type()) {
            // The field's number is the command.
            push.command = uint32_t(field->number());
            push.body = reflection.GetMessage(*request, field).SerializeAsString();
            ++bodies;
        }
    }
    if (bodies + int(request->has_bodyhex()) != 1) {
        errors.emplace_back("must hold exactly one of bodyHex, premiumChange, vipChange, adChange, adCheck, adNew");
    } else if (request->has_command() != request->has_bodyhex()) {
        errors.emplace_back("command: must be given with bodyHex, and only with it");
    } else if (request->has_bodyhex()) {
        push.body = FromHex(request->bodyhex()).value_or("");
        return push;
    } else {
        return push;
    }
    return std::nullopt;
}

}  // namespace devserver
