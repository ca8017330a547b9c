#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Scenario.h"

namespace devserver {

/// What a client asks of a place: what is due there, or exactly the ads that it names.
struct AdQuery {
    int32_t adType = 0;
    int32_t adPosition = 0;
    std::vector<std::string> adIds;
};

/// Both paths take the same members.
AdQuery ReadAdQuery(const CJsonNode& root);

/// Who asks, as far as the server knows.
struct Audience {
    std::optional<uint64_t> user;
    std::optional<Language> language;
};

/// How things stand at the moment of an answer.
struct AdSurroundings {
    const CScenario& scenario;
    int64_t nowSeconds = 0;     // of the server's clock
    std::string pictureFolder;  // a URL that ends in a slash
};

/// The campaigns of the place that are due, in the scenario's order: in their windows, ends included, and for this
/// audience. One that is for somebody is not for an audience that is unknown.
Json::Value AnswerAdSearch(const AdQuery& query, const Audience& audience, const AdSurroundings& surroundings);

/// The campaigns of the place whose ids are named, in the order of the ids, whenever and for whomever they are.
Json::Value AnswerAdCheck(const AdQuery& query, const AdSurroundings& surroundings);

/// The ads that were exposed, of a notice that is complete.
std::vector<std::string> ReadExposure(const CJsonNode& root);

}  // namespace devserver
