#include "core/url.h"

#include <QByteArray>
#include <QUrl>

std::string core::url::Decode(const std::string& text) {
    return QByteArray::fromPercentEncoding(QByteArray::fromStdString(text)).toStdString();
}

std::string core::url::GetHost(const std::string& url) {
    return QUrl(QString::fromStdString(url), QUrl::StrictMode).host().toStdString();
}
