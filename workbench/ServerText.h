#pragma once

#include "workbench/ControlClient.h"

/// Describes a failed answer of the server for the user.
inline QString ErrorText(const ServerAnswer& answer) {
    return (answer.reached ? QStringLiteral("The server refuses: %1")
                           : QStringLiteral("The server does not answer: %1"))
        .arg(answer.error);
}
