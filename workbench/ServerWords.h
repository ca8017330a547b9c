#pragma once

#include "workbench/ControlClient.h"

/// A failed answer of the server, for a person.
inline QString WordsOf(const ServerAnswer& answer) {
    return (answer.reached ? QStringLiteral("The server refuses: %1")
                           : QStringLiteral("The server does not answer: %1"))
        .arg(answer.error);
}
