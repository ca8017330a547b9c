#pragma once

#include <QString>
#include <string>

#include "framework/export.h"

namespace core {
namespace langx {

/// Returns the text with that id in the display language.
/// Thread: main thread.
/// Failure: `fallback`, read as UTF-8, if the language has no such text.
ZRHOST_API QString tr(unsigned int textId, const std::string& fallback);

}  // namespace langx
}  // namespace core
