#pragma once

/// The programs and libraries of this build that the tests start or load. One source holds the paths, so that clones
/// share the compiled objects of all others.
namespace build {

extern const char* const kClient;
extern const char* const kDevServer;
extern const char* const kModule;
extern const char* const kAdDriver;
extern const char* const kRecorder;
extern const char* const kHangs;
extern const char* const kTestModules;  // a folder

}  // namespace build
