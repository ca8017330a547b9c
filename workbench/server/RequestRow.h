#pragma once

#include <QStringList>
#include <string>
#include <vector>

/// A field of a request form.
struct RequestField {
    enum class EnType { Number, Text, Flag, Numbers, Texts, Json };

    EnType type;
    /// A member of the body; dots lead into objects. A key in braces fills that place of the path. An empty key is the
    /// whole body.
    std::string key;
    const char* label;
    const char* value = "";  // initial text
    const char* hint = "";
    QStringList choices = {};  // proposals: the value, two blanks and its meaning
};

/// A request to the server's control API, from which a form is built. A new request needs a row in RequestRows.cpp.
struct RequestRow {
    const char* name;  // of the form's object
    const char* title;
    const char* method;
    const char* path;
    std::vector<RequestField> fields;
    const char* action = "Send";
    const char* done = "Done";  // shown on success, with the count in place of %1
    /// Path of the value that the request replaces, such as "ads.adType=2,adPosition={adPosition}" with conditions for
    /// an item of a list. A value that is no object is that of the first field.
    const char* current = nullptr;
    const char* push = nullptr;           // body of the push that follows on success
    const char* source = "/v1/scenario";  // is read for `current`
    /// Texts of buttons that add to the value of the first field and send it. 0 resets the value.
    std::vector<std::pair<const char*, qint64>> steps = {};
    const char* count = nullptr;  // member of the answer
    std::string body = "{}";      // members that are always sent
};

/// The tables of all requests.
namespace requests {

const std::vector<RequestRow>& Pushes();
const std::vector<RequestRow>& Faults();
/// The paths have the place {user}.
const std::vector<RequestRow>& OfUser();
const std::vector<RequestRow>& OfServer();
/// All faults of commands, and those of paths.
const std::vector<RequestRow>& SetFaults();
const RequestRow& Scenario();
const RequestRow& Clock();

}  // namespace requests
