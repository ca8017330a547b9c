#include "GrowthBizLogUtil.h"

#include <QMetaEnum>
#include <QStringBuilder>

std::string CGrowthBizLogUtil::GetModuleName(ModuleType type) {
    static const QMetaEnum names = QMetaEnum::fromType<ModuleType>();
    const char* name = names.valueToKey(type);
    return name ? name : "";
}

void CGrowthBizLogUtil::WriteLog(const char* source, int line, const char* function, ZRLogType severity,
                                 ModuleType type, const std::string& message) {
    const std::string name = GetModuleName(type);
    // Not read as UTF-8, which is intended: bodies are logged raw, and each byte must be kept.
    const QString text = QLatin1Char('[') % QLatin1String(name.data(), int(name.size())) % QLatin1String("] ") %
                         QLatin1String(message.data(), int(message.size()));
    FrameWork::_WriteLogRaw(source, line, function, severity, kGrowthModuleTag, text, -128);
}
