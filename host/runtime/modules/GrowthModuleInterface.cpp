#include "modules/IZRGrowthModuleInterface.h"

IZRGrowthModuleInterface::~IZRGrowthModuleInterface() = default;
