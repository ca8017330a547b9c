#pragma once

#include <QString>
#include <QUrl>

#include "framework/export.h"

namespace host {

/// The part of the client that opens a URL.
enum class EnUrlTarget { kRefused, kPage, kWeb };

struct UrlVerdict {
    EnUrlTarget target = EnUrlTarget::kRefused;
    QUrl url;
    QString reason;  // why it was refused
};

/// Characters of the longest URL that is opened.
constexpr int kMaxUrlLength = 8192;

/// Checks the text of a URL. `internal` builds may open http on loopback. Any thread.
ZRHOST_API UrlVerdict CheckUrl(const QString& text, bool internal);

}  // namespace host
