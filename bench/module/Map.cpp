// Loads the libraries of the arguments. Prints the time of the last one in nanoseconds and the number of libraries that
// it loaded. This is a program because a process maps a library once.
#include <dlfcn.h>
#include <link.h>

#include <cinttypes>
#include <cstdio>

#include "Child.h"

namespace {

int MappedLibraries() {
    int count = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* /*info*/, size_t /*size*/, void* number) {
            ++*static_cast<int*>(number);
            return 0;
        },
        &count);
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    int64_t nanos = 0;
    int brought = 0;
    for (int i = 1; i < argc; ++i) {
        const int before = MappedLibraries();
        const int64_t began = bench::MonotonicNanos();
        // All symbols are resolved, as in the plug-in loader.
        const void* library = dlopen(argv[i], RTLD_NOW | RTLD_LOCAL);
        nanos = bench::MonotonicNanos() - began;
        brought = MappedLibraries() - before;
        if (!library) {
            fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
    }
    printf("%" PRId64 " %d\n", nanos, brought);
    return 0;
}
