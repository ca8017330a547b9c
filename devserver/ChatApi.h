#pragma once

#include "WebServer.h"

namespace devserver {

/// The pages of the AI chat and its answers, which are streamed in pieces. It has no state. Main thread.
class CChatApi {
public:
    /// Adds its routes, ahead of those that refuse all other requests.
    static void AddRoutes(CWebServer& server);
};

}  // namespace devserver
