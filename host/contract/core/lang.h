#pragma once

#include "framework/export.h"

namespace core {

/// The display language. The value changes before bus message 20100 announces it.
/// Thread: main thread.
/// Failure: English without a host.
namespace lang {

/// The server uses the same numbers.
enum LanguageId : int {
    kLanguageSimplifiedChinese = 0,
    kLanguageTraditionalChinese = 1,
    kLanguageEnglish = 2,
    kLanguageJapanese = 5,
    kLanguageFrench = 7,
};

/// Returns the language's number, a LanguageId. Any other value is to be treated as English.
ZRHOST_API int GetLanguageID();

/// Returns whether the language is simplified or traditional Chinese.
ZRHOST_API bool IsChinese();

}  // namespace lang
}  // namespace core
