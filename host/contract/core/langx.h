#pragma once

#include <QString>
#include <string>

#include "framework/export.h"

namespace core {
namespace langx {

/// The text with that id in the display language; `fallback`, read as UTF-8, where the language has none.
/// Main thread.
ZRHOST_API QString tr(unsigned int textId, const std::string& fallback);

}  // namespace langx
}  // namespace core
