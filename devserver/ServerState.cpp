#include "ServerState.h"

#include <fmt/format.h>

#include <QDateTime>

namespace devserver {

int64_t ServerState::ServerTimeMs() const {
    return QDateTime::currentMSecsSinceEpoch() + clockOffsetMs;
}

std::string ServerState::Origin() const {
    return fmt::format(FMT_STRING("http://127.0.0.1:{}"), httpPort);
}

}  // namespace devserver
