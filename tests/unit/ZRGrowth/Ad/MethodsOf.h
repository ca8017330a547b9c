#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <cstring>
#include <string>
#include <vector>

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

/// The place of a virtual operation in its class's table, as this platform's calls find it.
template <class Member>
std::ptrdiff_t PlaceOf(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / std::ptrdiff_t(sizeof(void*));
}
