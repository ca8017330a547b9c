#pragma once

#include <QString>

namespace host::web {

/// The texts that web widgets show, as ids of core::langx.
enum class EnWebText : unsigned int {
    kLoading = 900001,
    kLoadFailed = 900002,
    kPageEnded = 900003,
    kNoEngine = 900004,
    kNoConnection = 900005,
    kRetry = 900006,
    kOpenInBrowser = 900007,
    kCopy = 900008,
    kPaste = 900009,
    kCut = 900010,
    kSelectAll = 900011,
};

/// Returns the text in the display language. Main thread.
QString Text(EnWebText text);

}  // namespace host::web
