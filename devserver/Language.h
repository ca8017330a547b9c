#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "JsonNode.h"

namespace devserver {

/// The languages that the server has texts in.
enum class Language { SimplifiedChinese, TraditionalChinese, English, Japanese, French };

/// The language of a client's number for it; English for every number that is none.
Language LanguageOfNumber(int32_t number);

struct LanguageKey {
    Language language;
    const char* key;  // in scenarios
};

constexpr std::array<LanguageKey, 5> kLanguageKeys{{
    {Language::English, "en"},
    {Language::SimplifiedChinese, "zh-Hans"},
    {Language::TraditionalChinese, "zh-Hant"},
    {Language::Japanese, "ja"},
    {Language::French, "fr"},
}};

/// Something that may be there in each language.
template <class T>
using ByLanguage = std::map<Language, T>;

/// The members that an object per language has, by `read`. Refuses unknown languages, and the lack of
/// English where it is needed.
template <class T, class Read>
ByLanguage<T> ReadByLanguage(const CJsonNode& node, bool needsEnglish, Read read) {
    if (needsEnglish) {
        node.Keys({"en"}, {"zh-Hans", "zh-Hant", "ja", "fr"});
    } else {
        node.Keys({}, {"en", "zh-Hans", "zh-Hant", "ja", "fr"});
    }
    ByLanguage<T> result;
    for (const LanguageKey& language : kLanguageKeys) {
        if (const CJsonNode member = node.Member(language.key); member.Present()) {
            result[language.language] = read(member);
        }
    }
    return result;
}

template <class T, class Write>
Json::Value WriteByLanguage(const ByLanguage<T>& values, Write write) {
    Json::Value json(Json::objectValue);
    for (const LanguageKey& language : kLanguageKeys) {
        const auto found = values.find(language.language);
        if (found != values.end()) {
            json[language.key] = write(found->second);
        }
    }
    return json;
}

}  // namespace devserver
