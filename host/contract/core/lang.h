#pragma once

#include "framework/export.h"

namespace core {

/// The display language. Main thread. The value changes before bus message 20100 tells of it.
namespace lang {

enum LanguageId : int {
    kLanguageSimplifiedChinese = 0,
    kLanguageTraditionalChinese = 1,
    kLanguageEnglish = 2,
    kLanguageJapanese = 5,
    kLanguageFrench = 7,
};

/// 0 simplified Chinese, 1 traditional Chinese, 5 Japanese, 7 French; any other value is English.
ZRHOST_API int GetLanguageID();

/// Whether the language is a Chinese one, simplified or traditional.
ZRHOST_API bool IsChinese();

}  // namespace lang
}  // namespace core
