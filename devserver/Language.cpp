#include "Language.h"

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

}  // namespace devserver
