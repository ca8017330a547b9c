#pragma once

#include <QString>

/// Names of the activation types of rights, which are the server's numbers from 0.
namespace right_states {

constexpr int kCount = 7;
constexpr int kLimitedTime = 1;

/// Returns the name in the display language. An unknown number has the name of 0.
QString Name(int activationType);

}  // namespace right_states
