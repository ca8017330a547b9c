// Preloaded into a client. The lookup of hangs.example takes a minute and creates the file ZR_LOOKUP_FILE. Each flush
// to the disk takes a minute while the file ZR_DISK_FILE exists.
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#define ZR_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

constexpr unsigned kHangSeconds = 60;

template <class Function>
Function* Original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int Flush(const char* name, int file) {
    const char* hangs = std::getenv("ZR_DISK_FILE");
    if (hangs && access(hangs, F_OK) == 0) {
        sleep(kHangSeconds);
    }
    return Original<int(int)>(name)(file);
}

}  // namespace

ZR_EXPORT int getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result) {
    if (node && std::strcmp(node, "hangs.example") == 0) {
        close(open(std::getenv("ZR_LOOKUP_FILE"), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        sleep(kHangSeconds);
        return EAI_AGAIN;
    }
    return Original<decltype(getaddrinfo)>("getaddrinfo")(node, service, hints, result);
}

ZR_EXPORT int fsync(int file) {
    return Flush("fsync", file);
}

ZR_EXPORT int fdatasync(int file) {
    return Flush("fdatasync", file);
}
