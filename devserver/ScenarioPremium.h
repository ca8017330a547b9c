#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnswerHead.h"
#include "Language.h"

namespace devserver {

// What has no value here is an absent field on the wire.

struct RightTexts {
    std::optional<std::string> mainTitle;
    std::optional<std::string> mainBtn;
    std::optional<std::string> detailTitle;
    std::optional<std::string> detailSubTitle;
    std::optional<std::string> detailBtn;
    std::optional<std::string> detailSubBtn;
};

struct RightLinks {
    std::optional<int32_t> mainBtn;
    std::optional<int32_t> detailBtn;
    std::optional<int32_t> detailSubBtn;
};

/// How a right is shown to whoever has it.
struct RightDisplay {
    std::optional<std::string> uiType;
    std::optional<Json::Value> otherInfo;  // a text goes out as it stands, anything else as JSON
    std::optional<RightLinks> links;
    std::optional<ByLanguage<RightTexts>> texts;  // English at least

    /// The texts in a language, or in English; null without any.
    const RightTexts* TextsIn(Language language) const;
};

using RightCatalogue = std::map<int32_t, RightDisplay>;  // by the number of the right

/// A right that a user has, or is told not to have.
struct UserRight {
    int32_t access = 0;
    std::optional<bool> hasPermission;
    std::optional<int32_t> activationType;
    std::optional<int32_t> daysLeft;
    std::optional<int32_t> activationSource;
    bool display = true;  // sent with the catalogue's entry, if that has one
    bool state = true;    // sent with the state above
};

struct Premium {
    AnswerHead head;
    bool data = true;  // sent with data, rights or none
    std::vector<UserRight> rights;
};

/// The member "rights" of a scenario, a list.
RightCatalogue ReadRightCatalogue(const CJsonNode& node);
Json::Value WriteRightCatalogue(const RightCatalogue& catalogue);

/// The member "premium" of a user.
Premium ReadPremium(const CJsonNode& node);
Json::Value WritePremium(const Premium& premium);

}  // namespace devserver
