# A compiler cache, a fast linker and precompiled headers. Each is optional: without it the build is only slower.
find_program(ZR_CCACHE ccache)
if(ZR_CCACHE)
    # Paths below the source tree are hashed relative to it, so that all clones share one cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros ${ZR_CCACHE})
endif()

find_program(ZR_MOLD mold)
if(ZR_MOLD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_link_options(-fuse-ld=mold)
endif()

# Debug information takes a third of the compile time of the preset dev, and no check needs it.
if(DEFINED ENV{ZR_NO_DEBUG_INFO})
    add_compile_options(-g0)
endif()

# ccache needs these options: g++'s shows it the headers of a precompiled one; clang's lets a precompiled header from the
# cache be used, whose headers have another time.
set(pch_options $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")

# zr_precompile(<target> <header>...): precompiles these headers for all sources of the target.
function(zr_precompile target)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    target_compile_options(${target} PRIVATE ${pch_options})
endfunction()

# zr_reuse_precompiled(<target> <other>): uses the precompiled headers of another target with the same options.
function(zr_reuse_precompiled target other)
    target_precompile_headers(${target} REUSE_FROM ${other})
    target_compile_options(${target} PRIVATE ${pch_options})
endfunction()
