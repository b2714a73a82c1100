# SPDX-License-Identifier: Apache-2.0
# How every target is compiled: language, warnings, sanitizers, and the faster tools where they are installed.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(LUMARO_CCACHE ccache)
if(LUMARO_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${LUMARO_CCACHE}")
endif()
find_program(LUMARO_MOLD mold)
if(LUMARO_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wswitch -Wnon-virtual-dtor -Werror)
# Both devices and the room must reach the same doubles: no fused multiply-add where the source has none.
add_compile_options(-ffp-contract=off)
# A fold over a list of one or no alternatives leaves its helper unused; g++ 12 says so, clang does not.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-unused-but-set-variable)
endif()

if(LUMARO_SANITIZERS)
    add_compile_options(-fsanitize=${LUMARO_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${LUMARO_SANITIZERS})
endif()

if(LUMARO_TIDY)
    set(CMAKE_CXX_CLANG_TIDY clang-tidy-19 --quiet)
endif()
