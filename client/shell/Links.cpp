#include "Links.h"

#include <QPushButton>
#include <QVariant>

#include "Translation.h"
#include "core/urlhandler.h"

namespace links {

bool Open(const QString& url) {
    using namespace core::urlhandler;
    return DispatchUrl(url, kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
}

QPushButton* NewLink(const QString& name, const char* source, const QString& url, QWidget* parent) {
    auto* link = new QPushButton(parent);
    link->setObjectName(name);
    link->setFlat(true);
    link->setCursor(Qt::PointingHandCursor);
    link->setProperty("link", true);
    translation::OnLanguageChange(link, [link, source] { link->setText(translation::PageText(source)); });
    QObject::connect(link, &QPushButton::clicked, link, [url] { Open(url); });
    return link;
}

}  // namespace links
