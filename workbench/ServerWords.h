#pragma once

#include "ClientTexts.h"
#include "workbench/ControlClient.h"

/// A failed answer of the server, for a person.
inline QString WordsOf(const ServerAnswer& answer) {
    return texts::Tr(answer.reached ? texts::kServerRefuses : texts::kServerUnreachable).arg(answer.error);
}
