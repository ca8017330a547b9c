#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace devserver {

class RightText;
class RightTexts;

/// Languages of the server's texts, numbered as the fields of RightTexts.
enum class Language { English = 1, SimplifiedChinese, TraditionalChinese, Japanese, French };

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

/// Returns the language of a client's number for it, English for an unknown number.
Language LanguageOfNumber(int32_t number);

/// Returns the key of a language in scenarios.
std::string KeyOf(Language language);

/// Returns the texts in the language, or in English if there are none.
const RightText& TextIn(const RightTexts& texts, Language language);

}  // namespace devserver
