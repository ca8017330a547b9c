#include "RightStates.h"

#include <QCoreApplication>

namespace right_states {

QString Name(int activationType) {
    static constexpr const char* kNames[kCount] = {
        QT_TRANSLATE_NOOP("RightStates", "No state"), QT_TRANSLATE_NOOP("RightStates", "Limited time"),
        QT_TRANSLATE_NOOP("RightStates", "Frozen"),   QT_TRANSLATE_NOOP("RightStates", "Active"),
        QT_TRANSLATE_NOOP("RightStates", "Empty"),    QT_TRANSLATE_NOOP("RightStates", "Not activated"),
        QT_TRANSLATE_NOOP("RightStates", "Ready"),
    };
    const bool known = activationType >= 0 && activationType < kCount;
    return QCoreApplication::translate("RightStates", kNames[known ? activationType : 0]);
}

}  // namespace right_states
