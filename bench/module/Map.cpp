// Maps the libraries that the arguments name, and prints how many nanoseconds the last one took and how many
// libraries it brought. A process of its own, since a library is mapped once.
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
        // As the plug-in loader maps: with all symbols resolved.
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
