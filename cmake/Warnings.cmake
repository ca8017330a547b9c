# The compile options of our own code. Generated code does not link this target.
add_library(zr_options INTERFACE)
file(RELATIVE_PATH source_from_build ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})
string(REGEX REPLACE "/$" "" source_from_build ${source_from_build})
target_compile_options(zr_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # No path of the machine in logs, assertions and debug information; a compiler cache may pass relative ones.
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}/= -ffile-prefix-map=${source_from_build}/=
    $<$<BOOL:${ZR_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(zr_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)

# These options apply to everything that is linked together, generated code included.
set(ZR_NO_UNDEFINED -Wl,--no-undefined)
if(ZR_SANITIZE)
    # The sanitizer's runtime is linked by the program only.
    set(ZR_NO_UNDEFINED)
    add_compile_options(-O0 -g1 -fsanitize=${ZR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZR_SANITIZE})
endif()
# The options of the module's sources for coverage. Everything else is compiled without counters.
add_library(zr_counted INTERFACE)
if(ZR_COVERAGE)
    target_compile_options(zr_counted INTERFACE -fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()
