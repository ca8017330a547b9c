#include "AnswerHead.h"

namespace devserver {

AnswerHead ReadAnswerHead(const CJsonNode& node) {
    AnswerHead head;
    if (const CJsonNode code = node.Member("code"); code.IsNull()) {
        head.code.reset();
    } else {
        head.code = code.Int32();
    }
    head.message = node.Member("message").Maybe(&CJsonNode::Text);
    return head;
}

void WriteAnswerHead(Json::Value& json, const AnswerHead& head) {
    if (!head.code) {
        json["code"] = Json::Value();
    } else if (*head.code != 0) {
        json["code"] = *head.code;
    }
    WriteMember(json, "message", head.message);
}

}  // namespace devserver
