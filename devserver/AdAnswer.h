#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

#include "Language.h"
#include "Scenario.h"

namespace devserver {

/// The user and language of a client, where the server knows them.
struct Audience {
    std::optional<uint64_t> user;
    std::optional<Language> language;
};

struct AdContext {
    const CScenario& scenario;
    int64_t nowSeconds = 0;     // server's time
    std::string pictureFolder;  // a URL that ends in a slash
};

/// Returns the due campaigns of the ad position, in the scenario's order: in all three windows, ends included, and for
/// this audience. A campaign with a condition is not for an unknown audience.
Json::Value AnswerAdSearch(const AdQuery& query, const Audience& audience, const AdContext& context);

/// Returns the campaigns of the ad position that the query names, in the query's order, due or not.
Json::Value AnswerAdCheck(const AdQuery& query, const AdContext& context);

}  // namespace devserver
