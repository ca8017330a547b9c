#include "Access.h"

#include <fmt/format.h>

#include <QRandomGenerator>
#include <QUrl>

namespace devserver {

std::string RandomToken() {
    QRandomGenerator* random = QRandomGenerator::system();
    return fmt::format(FMT_STRING("{:016x}{:016x}"), random->generate64(), random->generate64());
}

bool SameToken(const std::string& given, const std::string& expected) {
    if (given.size() != expected.size()) {
        return false;
    }
    unsigned difference = 0;
    for (size_t i = 0; i < given.size(); ++i) {
        difference |= static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(expected[i]);
    }
    return difference == 0;
}

bool IsLoopbackOrigin(const QString& origin) {
    const QUrl url(origin, QUrl::StrictMode);
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return web && (url.host() == QLatin1String("127.0.0.1") || url.host() == QLatin1String("localhost"));
}

}  // namespace devserver
