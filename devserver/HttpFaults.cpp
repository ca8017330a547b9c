#include "HttpFaults.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>

#include "AdPaths.h"

namespace devserver {
namespace {

constexpr unsigned kFaultsDepth = 16;
constexpr uint64_t kMaxDelayMs = 600'000;
constexpr uint64_t kMaxTimes = 1'000'000;
constexpr uint64_t kMaxExtraBytes = 16 * 1024 * 1024;
constexpr uint64_t kMaxMiB = 4'096;
constexpr int kFound = 302;

bool IsPicture(const std::string& path) {
    return path.rfind(kPicturesPath, 0) == 0;
}

void ReadBody(const CJsonNode& node, HttpFault& fault) {
    const CJsonNode text = node.Member("body");
    const CJsonNode bytes = node.Member("bodyHex");
    if (text.Present() && bytes.Present()) {
        node.Refuse("must hold at most one of body, bodyHex");
    }
    fault.body = text.Present() ? text.Maybe(&CJsonNode::Text) : bytes.Maybe(&CJsonNode::HexBytes);
}

// What would end the header it stands in is no location.
std::string ReadLocation(const CJsonNode& node) {
    const std::string location = node.NonEmptyText();
    if (std::any_of(location.begin(), location.end(), [](char c) { return c <= ' ' || c > '~'; })) {
        node.Refuse("must be of visible ASCII characters");
    }
    return location;
}

HttpFault ReadFault(const CJsonNode& node, bool isJson) {
    const std::vector<std::string> effects{"status", "delayMs",    "cutBytes", "body",     "bodyHex", "code",
                                           "noData", "extraBytes", "hugeMiB",  "redirect", "silent"};
    std::vector<std::string> keys = effects;
    keys.push_back("times");
    node.Keys({}, keys);
    if (std::none_of(effects.begin(), effects.end(),
                     [&](const std::string& key) { return node.Member(key).Present(); })) {
        node.Refuse(
            "must hold one of status, delayMs, cutBytes, body, bodyHex, code, noData, extraBytes, hugeMiB, "
            "redirect, silent");
    }
    for (const char* key : {"code", "noData"}) {
        if (!isJson && node.Member(key).Present()) {
            node.Member(key).Refuse("a picture has none");
        }
    }
    HttpFault fault;
    if (const CJsonNode status = node.Member("status"); status.Present()) {
        fault.status = int(status.Unsigned(200, 599));
    }
    ReadBody(node, fault);
    fault.code = node.Member("code").Maybe(&CJsonNode::Int32);
    fault.noData = node.Member("noData").Bool();
    if (const CJsonNode redirect = node.Member("redirect"); redirect.Present()) {
        fault.redirect = ReadLocation(redirect);
    }
    if (const CJsonNode delay = node.Member("delayMs"); delay.Present()) {
        fault.harm.delayMs = int(delay.Unsigned(0, kMaxDelayMs));
    }
    if (const CJsonNode cut = node.Member("cutBytes"); cut.Present()) {
        fault.harm.cutAt = cut.Unsigned(0, std::numeric_limits<int64_t>::max());
    }
    fault.harm.extraBytes = node.Member("extraBytes").Unsigned(0, kMaxExtraBytes);
    fault.harm.paddedTo = node.Member("hugeMiB").Unsigned(0, kMaxMiB) * 1024 * 1024;
    fault.harm.silent = node.Member("silent").Bool();
    if (const CJsonNode times = node.Member("times"); times.Present()) {
        fault.times = times.Unsigned(1, kMaxTimes);
    }
    return fault;
}

CHttpFaults::Table ReadFaults(const CJsonNode& root) {
    CHttpFaults::Table faults;
    for (const auto& [path, node] : root.Members()) {
        if (!IsServedPath(path)) {
            node.Refuse("the key must be a path that the server answers on");
            continue;
        }
        faults[path] = ReadFault(node, !IsPicture(path));
    }
    return faults;
}

HttpFault ReadFaultOfAnswer(const CJsonNode& root) {
    return ReadFault(root, true);
}

HttpFault ReadFaultOfPicture(const CJsonNode& root) {
    return ReadFault(root, false);
}

std::string WithCode(const std::string& body, const HttpFault& fault) {
    Errors errors;
    auto json = ParseJson(body, kFaultsDepth, errors);
    if (!json || !json->isObject()) {
        return body;
    }
    if (fault.code) {
        (*json)["code"] = *fault.code;
    }
    if (fault.noData) {
        json->removeMember("data");
    }
    return WriteJson(*json);
}

}  // namespace

bool IsServedPath(const std::string& path) {
    const std::array<const char*, 4> paths{kAdSearchPath, kAdCheckPath, kAdExposePath, kReportPath};
    return std::find(paths.begin(), paths.end(), path) != paths.end() ||
           (IsPicture(path) && path.size() > std::string(kPicturesPath).size());
}

std::optional<CHttpFaults::Table> HttpFaultsFromText(const std::string& text, Errors& errors) {
    return ReadJson(text, kFaultsDepth, ReadFaults, errors);
}

std::optional<HttpFault> HttpFaultFromText(const std::string& text, const std::string& path, Errors& errors) {
    return ReadJson(text, kFaultsDepth, IsPicture(path) ? ReadFaultOfPicture : ReadFaultOfAnswer, errors);
}

WebAnswer Struck(WebAnswer answer, const HttpFault& fault) {
    if (fault.redirect) {
        answer.status = kFound;
        answer.headers.emplace_back("Location", *fault.redirect);
    }
    answer.status = fault.status.value_or(answer.status);
    if (fault.code || fault.noData) {
        answer.body = WithCode(answer.body, fault);
    }
    answer.body = fault.body.value_or(answer.body);
    answer.harm = fault.harm;
    return answer;
}

bool RefusesRequest(const HttpFault& fault) {
    return fault.status.value_or(fault.redirect ? kFound : 200) >= 300 || fault.code.value_or(0) != 0;
}

}  // namespace devserver
