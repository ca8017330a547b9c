#include "workbench/WireDecoder.h"
#include "workbench/diagnosis/Literal.h"
#include "workbench/server/RequestRow.h"

namespace {

using EnType = RequestField::EnType;
using Fields = std::vector<RequestField>;

RequestField Number(const char* key, const char* label, const char* value = "", const QStringList& choices = {}) {
    return {EnType::Number, key, label, value, "", choices};
}
RequestField Text(const char* key, const char* label, const char* value = "", const QStringList& choices = {}) {
    return {EnType::Text, key, label, value, "", choices};
}
RequestField Flag(const char* key, const char* label, const char* value = "") {
    return {EnType::Flag, key, label, value, "", {QString(), "true"_q, "false"_q}};
}
RequestField JsonText(const char* key, const char* label, const char* hint = "") {
    return {EnType::Json, key, label, "", hint};
}

// The choices are read only. clazy:excludeall=non-pod-global-static
const QStringList kAdTypes{"2  popup"_q, "3  banner"_q};
const QStringList kActivations{"1  limited time"_q, "2  frozen"_q,        "3  full"_q,
                               "4  empty"_q,        "5  not activated"_q, "6  ready"_q};
const QStringList kSources{"1  premium rule"_q, "2  VIP rule"_q, "3  private customer"_q};
const QStringList kPaths{"/ad/search"_q, "/ad/check"_q, "/ad/expose"_q, "/report/events"_q,
                         "/pictures/card-member.png"_q};
/// Replies without a code, and with a code alone.
const QStringList kBodies{"ff00ff  cannot be decoded"_q, "12076e6f20636f6465  without a code"_q, "0805  code 5"_q,
                          "08ffffffffffffffffff01  code -1"_q};

QStringList ReplyCommands() {
    QStringList choices;
    for (const wire::Command& command : wire::Commands()) {
        if (command.reply) {
            choices << "%1  %2"_q.arg(command.number).arg(QString::fromUtf8(command.name));
        }
    }
    return choices;
}

constexpr const char* kPut = "PUT";
constexpr const char* kSave = "Save to server";
constexpr const char* kSent = "Sent to connections: %1";
constexpr const char* kNextLogin = "Saved; it counts from the next login on";
constexpr const char* kPushed = "Saved, and the user's clients were told";
constexpr const char* kPushRight = R"({"user":{user},"premiumChange":{"delaySeconds":0,"access":[{access}]}})";
constexpr const char* kPushRights = R"({"user":{user},"premiumChange":{"delaySeconds":0,"needAll":true}})";

/// A push whose fields are in the member `push`.
RequestRow Push(const char* name, const char* title, const std::string& push, Fields fields) {
    for (RequestField& field : fields) {
        field.key = push + "." + field.key;
    }
    fields.push_back({EnType::Number, "user", "To user", "", "Everybody who is logged in, if empty"});
    RequestRow row{name, title, "POST", "/v1/push", fields, "Send", kSent};
    row.count = "sent";
    row.body = "{\"" + push + "\":{}}";
    return row;
}

RequestRow AdPush(const char* name, const char* title, const char* push, Fields ids = {}) {
    Fields fields{Number("adType", "Type", "2", kAdTypes), Number("adPosition", "Position", "42"),
                  Number("delay", "Delay, s", "0")};
    fields.insert(fields.end(), ids.begin(), ids.end());
    return Push(name, title, push, fields);
}

}  // namespace

// A row of the tables has its own lines.
// clang-format off

const std::vector<RequestRow>& requests::Pushes() {
    static const std::vector<RequestRow> rows{
        Push("PushRights", "Change of rights, 20837", "premiumChange",
             {Number("delaySeconds", "Delay, s", "5"), Flag("needAll", "All rights", "true"),
              {EnType::Numbers, "access", "Rights", "", "Numbers of rights, as 1 5 1000"}}),
        Push("PushVip", "Change of VIP status, 20832", "vipChange", {Number("windowSeconds", "Window, s", "5")}),
        AdPush("PushAdChange", "Change of ads, 20145", "adChange", {{EnType::Texts, "offlineAdIds", "Taken offline"}}),
        AdPush("PushAdCheck", "Ads to check, 20170", "adCheck", {{EnType::Texts, "adIds", "Ad ids"}}),
        AdPush("PushAdNew", "New ads, 20171", "adNew"),
        {"PushBytes", "Any command", "POST", "/v1/push",
         {Number("command", "Command"), Text("bodyHex", "Body, hex", "\"\""), Number("user", "To user")},
         "Send", kSent, nullptr, nullptr, nullptr, {}, "sent"},
    };
    return rows;
}

const std::vector<RequestRow>& requests::Faults() {
    static const RequestField times{EnType::Number, "times", "Times", "1", "For ever if empty"};
    static const std::vector<RequestRow> rows{
        {"ReplyFault", "Replies to a command", kPut, "/v1/faults/{command}",
         {Number("{command}", "Command", "20982", ReplyCommands()), Number("error", "Error number", "7"),
          Text("bodyHex", "Body, hex", "", kBodies), Number("replyCommand", "Wrong command"),
          Text("frameHex", "Whole frame, hex"), Number("copies", "Copies"), Number("delayMs", "Delay, ms"),
          Flag("silent", "No reply"), Flag("drop", "Connection is cut"), times},
         "Set"},
        {"ResponseFault", "Answers over HTTP", kPut, "/v1/httpFaults{path}",
         {Text("{path}", "Path", "/ad/search", kPaths), Number("status", "Status", "500"), Number("code", "Code"),
          Flag("noData", "No data"), Text("body", "Body"), Text("bodyHex", "Body, hex"), Text("redirect", "Redirect to"),
          Number("hugeMiB", "Padded to MiB"), Number("cutBytes", "Cut after bytes"), Number("extraBytes", "Extra bytes"),
          Number("delayMs", "Delay, ms"), Flag("silent", "No answer"), times},
         "Set"},
        {"RemoveReplyFault", "Remove that of a command", "DELETE", "/v1/faults/{command}",
         {Number("{command}", "Command", "20982", ReplyCommands())}, "Remove"},
        {"RemoveResponseFault", "Remove that of a path", "DELETE", "/v1/httpFaults{path}",
         {Text("{path}", "Path", "/ad/search", kPaths)}, "Remove"},
    };
    return rows;
}

const std::vector<RequestRow>& requests::SetFaults() {
    static const std::vector<RequestRow> rows{
        {"ReplyFaults", "Set for commands", kPut, "/v1/faults", {JsonText("", "Set for commands")},
         kSave, "Saved", "", nullptr, "/v1/faults"},
        {"ResponseFaults", "Set for paths", kPut, "/v1/httpFaults", {JsonText("", "Set for paths")},
         kSave, "Saved", "", nullptr, "/v1/httpFaults"},
    };
    return rows;
}

const std::vector<RequestRow>& requests::OfUser() {
    static const RequestField code = JsonText("code", "Code", "A number, or null for an answer without a code");
    static const RequestField message = Text("message", "Message");
    static const std::vector<RequestRow> rows{
        {"GrantRight", "Grant or change a right", kPut, "/v1/users/{user}/rights/{access}",
         {Number("{access}", "Right"), Flag("hasPermission", "Held", "true"),
          Number("activationType", "Activation", "3", kActivations), Number("daysLeft", "Days left"),
          Number("activationSource", "Source", "", kSources), Flag("display", "With display"),
          Flag("state", "With state")},
         "Grant", kPushed, "users.id={user}.premium.rights.access={access}", kPushRight},
        {"TakeRight", "Take a right", "DELETE", "/v1/users/{user}/rights/{access}", {Number("{access}", "Right")},
         "Take", kPushed, nullptr, kPushRights},
        {"UserPremium", "All rights", kPut, "/v1/users/{user}/premium",
         {code, message, Flag("data", "With data"), JsonText("rights", "Rights")},
         kSave, kPushed, "users.id={user}.premium", kPushRights},
        {"UserVip", "VIP status", kPut, "/v1/users/{user}/vip",
         {Number("basic.version", "System", "", {"0  older"_q, "1  newer"_q}),
          Number("basic.newState", "State, newer"), Number("basic.newSubState", "Kind, newer"),
          Number("basic.autoRenewal", "Renewal"),
          Number("basic.state", "State, older", "", {"0  no member"_q, "1  member"_q}),
          Number("basic.level", "Grade, older"), Flag("qualification", "Qualified"), JsonText("entry", "Entry"), code,
          message},
         kSave, kPushed, "users.id={user}.vip", R"({"user":{user},"vipChange":{}})"},
        {"UserActivation", "Activation", kPut, "/v1/users/{user}/activation",
         {code, message, Number("daysLeft", "Days left"), Number("error", "Error number"), Flag("silent", "No reply")},
         kSave, "Saved; it counts for the next activation", "users.id={user}.activation"},
        {"UserTrade", "Trade module", kPut, "/v1/users/{user}/trade", {Flag("", "Answer")},
         kSave, kNextLogin, "users.id={user}.trade"},
        {"UserAIChat", "AI chat entries", kPut, "/v1/users/{user}/aiChat",
         {JsonText("entries", "Entries", R"(As [{"scene":2,"allOpen":true}])"), Number("resultCode", "Result code"),
          Text("resultMessage", "Message")},
         kSave, kNextLogin, "users.id={user}.aiChat"},
    };
    return rows;
}

const std::vector<RequestRow>& requests::OfServer() {
    static const Fields slot{Number("{adType}", "Type", "2", kAdTypes), Number("{adPosition}", "Position", "42")};
    static const std::vector<RequestRow> rows{
        {"AdSlot", "Ad position and campaigns", kPut, "/v1/ads/{adType}/{adPosition}",
         {slot[0], slot[1], JsonText("campaigns", "Campaigns"), Flag("enableClose", "Can be closed"),
          Number("showDuration", "Duration, s"), Number("showInterval", "Interval, s"),
          Number("showIntervalType", "Interval type"), JsonText("bannerPosition", "Banner")},
         kSave, "Saved; it counts for ads that are asked for from now on", "ads.adType={adType},adPosition={adPosition}"},
        {"RemoveAdSlot", "Remove an ad position", "DELETE", "/v1/ads/{adType}/{adPosition}", slot, "Remove"},
        {"Configuration", "Common configuration", kPut, "/v1/config/{name}",
         {Text("{name}", "Name", "ai_chat"), JsonText("", "Value")},
         kSave, "Saved and sent to the clients", "commonConfig.{name}"},
        {"DropConnections", "Connections", "POST", "/v1/drop",
         {{EnType::Number, "user", "Of user", "", "All connections if empty"}},
         "Drop", "Connections dropped: %1", nullptr, nullptr, nullptr, {}, "dropped"},
    };
    return rows;
}

const RequestRow& requests::Scenario() {
    static const RequestRow row{
        "Scenario", "Scenario", kPut, "/v1/scenario", {JsonText("", "Scenario")},
        "Apply to server", "The server runs this scenario; logins stay", ""};
    return row;
}

const RequestRow& requests::Clock() {
    static const RequestRow row{
        "Clock", "Server clock", kPut, "/v1/clock", {Number("offsetMs", "Offset, ms", "0")},
        "Set", "The clock is set", "clockOffsetMs", nullptr, "/v1/state",
        {{"+1 min", 60'000}, {"+1 h", 3'600'000}, {"+1 d", 86'400'000}, {"Reset", 0}}};
    return row;
}

// clang-format on
