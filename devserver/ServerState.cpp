#include "ServerState.h"

#include <QDateTime>

namespace devserver {

int64_t ServerState::ServerTimeMs() const {
    return QDateTime::currentMSecsSinceEpoch() + clockOffsetMs;
}

}  // namespace devserver
