#include "modules/IMainFrameModuleUtil.h"

IMainFrameModuleUtil::~IMainFrameModuleUtil() = default;
