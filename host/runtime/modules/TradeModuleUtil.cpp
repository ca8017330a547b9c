#include "modules/ITradeModuleUtil.h"

ITradeModuleUtil::~ITradeModuleUtil() = default;
