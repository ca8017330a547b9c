#include "BuildPaths.h"

namespace build {

const char* const kClient = ZR_CLIENT;
const char* const kDevServer = ZR_DEVSERVER;
const char* const kModule = ZR_MODULE;
const char* const kAdDriver = ZR_AD_DRIVER;
const char* const kRecorder = ZR_RECORDER;
const char* const kHangs = ZR_HANGS;
const char* const kTestModules = ZR_TEST_MODULES;

}  // namespace build
