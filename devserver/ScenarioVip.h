#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "AnswerHead.h"
#include "Language.h"

namespace devserver {

// What has no value here is an absent field on the wire.

struct VipBasic {
    std::optional<int32_t> state;
    std::optional<uint32_t> level;
    std::optional<uint32_t> version;
    std::optional<uint32_t> newState;
    std::optional<uint32_t> newSubState;
    std::optional<int32_t> autoRenewal;
};

/// The texts of the entry, which go out in all languages that they have.
struct VipEntry {
    std::optional<ByLanguage<std::string>> mainTitle;
    std::optional<ByLanguage<std::string>> btnTitle;
};

struct Vip {
    AnswerHead head;
    std::optional<bool> qualification;
    std::optional<VipBasic> basic;
    std::optional<VipEntry> entry;
};

/// The member "vip" of a user.
Vip ReadVip(const CJsonNode& node);
Json::Value WriteVip(const Vip& vip);

}  // namespace devserver
