#include "Links.h"

#include <QPushButton>
#include <QVariant>

#include "PremiumRights.h"
#include "Translation.h"
#include "core/url_linkid.h"
#include "core/urlhandler.h"

namespace links {

namespace {

QPushButton* NewButton(const QString& name, const char* source, QWidget* parent) {
    auto* link = new QPushButton(parent);
    link->setObjectName(name);
    link->setFlat(true);
    link->setCursor(Qt::PointingHandCursor);
    link->setProperty("link", true);
    translation::OnLanguageChange(link, [link, source] { link->setText(translation::PageText(source)); });
    return link;
}

}  // namespace

bool Open(const QString& url) {
    using namespace core::urlhandler;
    return DispatchUrl(url, kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
}

QPushButton* NewLink(const QString& name, const char* source, const QString& url, QWidget* parent) {
    QPushButton* link = NewButton(name, source, parent);
    QObject::connect(link, &QPushButton::clicked, link, [url] { Open(url); });
    return link;
}

QPushButton* NewLink(const QString& name, const char* source, EnPremiumAccess right, QWidget* parent) {
    QPushButton* link = NewButton(name, source, parent);
    QObject::connect(link, &QPushButton::clicked, link, [right] {
        const int id = CPremiumRights::Record(right).nMainBtnUrlID;
        Open(QString::fromStdString(core::url_linkid::GetLinkUrlWithTargetLinkId(ulong(id), 0)));
    });
    return link;
}

}  // namespace links
