#include "framework/HostLog.h"

namespace host {

void CHostLog::Write(ZRLogType type, const std::string& text) const {
    const std::string module = std::string("Host.") + m_pArea;
    FrameWork::_WriteLogRaw("", 0, "", type, module.c_str(), QString::fromStdString(text), -128);
}

}  // namespace host
