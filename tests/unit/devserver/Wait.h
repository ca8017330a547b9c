#pragma once

#include <functional>

/// Runs the event loop until the condition holds. False if it does not within ten seconds.
bool WaitUntil(const std::function<bool()>& condition);
