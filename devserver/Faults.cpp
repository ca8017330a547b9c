#include "Faults.h"

#include <QString>
#include <limits>

namespace devserver {
namespace {

constexpr unsigned kFaultsDepth = 16;
constexpr uint64_t kMaxDelayMs = 600'000;
constexpr uint64_t kMaxTimes = 1'000'000;
constexpr uint64_t kMaxCopies = 1'000;

Fault ReadFault(const CJsonNode& node) {
    node.Keys({}, {"error", "delayMs", "bodyHex", "replyCommand", "frameHex", "copies", "silent", "drop", "times"});
    Fault fault;
    bool hasEffect = false;
    if (const CJsonNode error = node.Member("error"); error.Present()) {
        fault.error = int32_t(error.Signed(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
        hasEffect = true;
    }
    if (const CJsonNode delay = node.Member("delayMs"); delay.Present()) {
        fault.delayMs = int(delay.Unsigned(0, kMaxDelayMs));
        hasEffect = true;
    }
    if (const CJsonNode body = node.Member("bodyHex"); body.Present()) {
        fault.body = body.HexBytes();
        hasEffect = true;
    }
    if (const CJsonNode command = node.Member("replyCommand"); command.Present()) {
        fault.replyCommand = uint32_t(command.Unsigned(0, std::numeric_limits<uint32_t>::max()));
        hasEffect = true;
    }
    if (const CJsonNode frame = node.Member("frameHex"); frame.Present()) {
        fault.frame = frame.HexBytes();
        hasEffect = true;
    }
    if (const CJsonNode copies = node.Member("copies"); copies.Present()) {
        fault.copies = int(copies.Unsigned(1, kMaxCopies));
        hasEffect = true;
    }
    if (const CJsonNode silent = node.Member("silent"); silent.Present()) {
        fault.silent = silent.Bool();
        hasEffect = true;
    }
    if (const CJsonNode drop = node.Member("drop"); drop.Present()) {
        fault.drop = drop.Bool();
        hasEffect = true;
    }
    if (const CJsonNode times = node.Member("times"); times.Present()) {
        fault.times = times.Unsigned(1, kMaxTimes);
    }
    if (!hasEffect) {
        node.Refuse("must hold one of error, delayMs, bodyHex, replyCommand, frameHex, copies, silent, drop");
    }
    return fault;
}

FaultTable ReadFaults(const CJsonNode& root) {
    FaultTable faults;
    for (const auto& [key, node] : root.Members()) {
        bool isNumber = false;
        const uint command = QString::fromStdString(key).toUInt(&isNumber);
        if (!isNumber || command == 0 || std::to_string(command) != key) {
            node.Refuse("the key must be a command's number");
            continue;
        }
        faults[command] = ReadFault(node);
    }
    return faults;
}

}  // namespace

std::optional<FaultTable> FaultsFromText(const std::string& text, Errors& errors) {
    return ReadJson(text, kFaultsDepth, ReadFaults, errors);
}

std::optional<Fault> FaultFromText(const std::string& text, Errors& errors) {
    return ReadJson(text, kFaultsDepth, ReadFault, errors);
}

}  // namespace devserver
