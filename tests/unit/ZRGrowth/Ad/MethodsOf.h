#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <string>
#include <vector>

#include "support/PlaceOf.h"

/// A class's own signals and slots as the meta-object has them, in its order: "signal Closed()",
/// "slot OnAdClicked(bool jumpResult)".
inline std::vector<std::string> MethodsOf(const QMetaObject& object) {
    std::vector<std::string> methods;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        const QMetaMethod method = object.method(i);
        std::string words = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
        words += method.name().toStdString() + "(";
        for (int j = 0; j < method.parameterCount(); ++j) {
            words += (j == 0 ? "" : ", ") + method.parameterTypes()[j].toStdString();
            const QByteArray name = method.parameterNames()[j];
            words += name.isEmpty() ? "" : " " + name.toStdString();
        }
        methods.push_back(words + ")");
    }
    return methods;
}
