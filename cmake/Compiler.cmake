# Warnings, sanitizers and the compiler cache, the same for every target.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

# At -O3 g++ 12 sees overlapping copies in `"text" + std::string()` and unset members in moved variants
# where there are none.
add_compile_options($<$<CONFIG:Release>:-Wno-restrict> $<$<CONFIG:Release>:-Wno-maybe-uninitialized>)

if(TYPLOOM_SANITIZE)
    # Checks between the instructions make more of them look as if they used what was never set.
    add_compile_options(-Wno-maybe-uninitialized)
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(TYPLOOM_FUZZ)
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
    add_compile_options(-Wno-error) # The compiler of every other build judges warnings.
    add_compile_options(-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=time_macros ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD AND NOT TYPLOOM_SANITIZE)
    add_link_options(-fuse-ld=mold)
endif()
