#include "GrowthBizLogUtil.h"

#include <QMetaEnum>

std::string CGrowthBizLogUtil::GetModuleName(ModuleType type) {
    const char* name = QMetaEnum::fromType<ModuleType>().valueToKey(type);
    return name ? name : "";
}

void CGrowthBizLogUtil::WriteLog(const char* source, int line, const char* function, ZRLogType severity,
                                 ModuleType type, const std::string& message) {
    const std::string text = fmt::format(FMT_STRING("[{}] {}"), GetModuleName(type), message);
    // Byte by byte on purpose, not as UTF-8: bodies are logged raw, and every byte must come through.
    FrameWork::_WriteLogRaw(source, line, function, severity, kGrowthModuleTag,
                            QString::fromLatin1(text.data(), int(text.size())), -128);
}
