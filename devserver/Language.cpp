#include "Language.h"

#include <algorithm>

#include "scenario.pb.h"

namespace devserver {

Language LanguageOfNumber(int32_t number) {
    switch (number) {
        case 0:
            return Language::SimplifiedChinese;
        case 1:
            return Language::TraditionalChinese;
        case 5:
            return Language::Japanese;
        case 7:
            return Language::French;
        default:
            return Language::English;
    }
}

std::string KeyOf(Language language) {
    return std::find_if(kLanguageKeys.begin(), kLanguageKeys.end(),
                        [language](const LanguageKey& key) { return key.language == language; })
        ->key;
}

const RightText& TextIn(const RightTexts& texts, Language language) {
    const auto* field = RightTexts::descriptor()->FindFieldByNumber(int(language));
    const auto& reflection = *texts.GetReflection();
    return reflection.HasField(texts, field) ? static_cast<const RightText&>(reflection.GetMessage(texts, field))
                                             : texts.en();
}

}  // namespace devserver
