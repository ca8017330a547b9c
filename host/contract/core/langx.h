#pragma once

#include <QString>
#include <string>

#include "framework/export.h"

namespace core {
namespace langx {

/// Returns the text with that id in the display language. Placeholders in it are not replaced.
/// A text that is on display does not change with the language: ask again after bus message 20100.
/// Thread: main thread.
/// Failure: `fallback`, read as UTF-8, if the language has no such text. The text of no other language is used.
ZRHOST_API QString tr(unsigned int textId, const std::string& fallback);

}  // namespace langx
}  // namespace core
