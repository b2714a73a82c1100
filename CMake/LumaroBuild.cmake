# SPDX-License-Identifier: Apache-2.0
# How every target is compiled: language, warnings, sanitizers, and the faster tools where they are installed.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The folders of this name hold what only this system has.
set(LUMARO_SYSTEM "${CMAKE_SYSTEM_NAME}")
if(LUMARO_SYSTEM STREQUAL "Darwin")
    set(LUMARO_SYSTEM macOS)
endif()

find_program(LUMARO_CCACHE ccache)
if(LUMARO_CCACHE)
    # Every checkout of these sources shares what was compiled; the two sloppinesses are what headers compiled ahead need.
    # Results are found by the files read, to the letter (depend mode): found by the preprocessed text, headers that differ in a comment
    # alone would share one set compiled ahead, and g++, which knows a "#pragma once" by its file's checksum, would read them twice.
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
        "CCACHE_SLOPPINESS=pch_defines,time_macros" "${LUMARO_CCACHE}")
endif()
find_program(LUMARO_MOLD mold)
if(LUMARO_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wswitch -Wnon-virtual-dtor)
# A new warning of another compiler is ours to mend, and no reason why people cannot build it.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(-Werror)
endif()
# What is passed on names no folder of whoever built it, and is the same from any.
option(LUMARO_WITHOUT_PATHS "Leave the folder of the sources out of what is built" OFF)
if(LUMARO_WITHOUT_PATHS)
    add_compile_options("-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
endif()
# Both devices and the room must reach the same doubles: no fused multiply-add where the source has none.
add_compile_options(-ffp-contract=off)
# g++ 12 alone: it calls the helper of a fold over no alternatives unused, takes a pointer to a place on the stack that is reset
# in time for a dangling one, a std::variant that is moved for one that may hold nothing, and at -O3 sees overflows in std::variant
# and overlaps in std::string that are not there. Under the thread sanitizer it sees copies past the end of one, and warns of the
# fences of Boost.Asio.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-unused-but-set-variable -Wno-stringop-overflow -Wno-dangling-pointer -Wno-restrict -Wno-maybe-uninitialized)
    if(LUMARO_SANITIZERS MATCHES "thread")
        add_compile_options(-Wno-array-bounds -Wno-tsan)
    endif()
endif()

# Clang finds in the templates of libstdc++ 12 a call of what the library itself calls deprecated.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options(-Wno-deprecated-declarations)
endif()

if(LUMARO_SANITIZERS)
    add_compile_options(-fsanitize=${LUMARO_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${LUMARO_SANITIZERS})
endif()

# The JSON library lays its types out by whether the compiler optimises, unless told: files compiled either way are linked together.
add_compile_definitions(SIMDJSON_DEVELOPMENT_CHECKS=0)

# Tests under sanitizers take longer to compile than to run.
set(LUMARO_TEST_OPTIONS "")
if(LUMARO_SANITIZERS)
    set(LUMARO_TEST_OPTIONS -O0)
endif()

# Sources that are little more than a network library's templates: under sanitizers each of them would take as long as twenty others.
# Address sanitizer alone reads them, and the optimiser not at all.
function(lumaro_compile_lightly)
    if(LUMARO_SANITIZERS MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        set_source_files_properties(${ARGN} PROPERTIES
            COMPILE_OPTIONS "-O0;-fno-sanitize=undefined" SKIP_PRECOMPILE_HEADERS ON)
    endif()
endfunction()

# Where several files are read as one: a file that gives a type its JSON makes that for all others, which must not see how.
function(lumaro_keep_codecs_apart)
    foreach(target IN LISTS ARGN)
        get_target_property(sources ${target} SOURCES)
        get_target_property(folder ${target} SOURCE_DIR)
        foreach(source IN LISTS sources)
            file(STRINGS "${folder}/${source}" codecs REGEX "Support/JsonCodec\\.h")
            if(codecs)
                set_source_files_properties("${folder}/${source}" TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
            endif()
        endforeach()
    endforeach()
endfunction()

# The target's classes have signals; what moc writes for them is not ours to mend. Of clang-tidy a check must be left that
# finds nothing there.
function(lumaro_use_moc target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    foreach(folder "${target}_autogen" .rcc)
        file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${folder}/.clang-tidy" "Checks: '-*,misc-unused-alias-decls'\n")
    endforeach()
endfunction()

if(LUMARO_TIDY)
    set(CMAKE_CXX_CLANG_TIDY clang-tidy-19 --quiet)
endif()
