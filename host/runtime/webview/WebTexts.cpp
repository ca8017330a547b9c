#include "webview/WebTexts.h"

#include "core/langx.h"

namespace host::web {
namespace {

const char* Fallback(EnWebText text) {
    switch (text) {
        case EnWebText::kLoading:
            return "Loading\u2026";
        case EnWebText::kLoadFailed:
            return "This page could not be loaded.";
        case EnWebText::kPageEnded:
            return "This page ended unexpectedly.";
        case EnWebText::kNoEngine:
            return "Web pages cannot be displayed here. You can open this page in your browser.";
        case EnWebText::kNoConnection:
            return "No connection. Please check your network.";
        case EnWebText::kRetry:
            return "Try again";
        case EnWebText::kOpenInBrowser:
            return "Open in browser";
        case EnWebText::kCopy:
            return "Copy";
        case EnWebText::kPaste:
            return "Paste";
        case EnWebText::kCut:
            return "Cut";
        case EnWebText::kSelectAll:
            return "Select all";
    }
    return "";
}

}  // namespace

QString Text(EnWebText text) {
    return core::langx::tr(static_cast<unsigned int>(text), Fallback(text));
}

}  // namespace host::web
