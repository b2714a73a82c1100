# SPDX-License-Identifier: Apache-2.0
# Headers that most files read are compiled once for each way of compiling, and shared: the core's for plain libraries and programs,
# and the same with Qt's for what has windows. Not for clang-tidy, which must see what each file includes by itself, nor for fuzzers.

set(LUMARO_PRECOMPILE ON)
if(LUMARO_TIDY OR LUMARO_FUZZERS)
    set(LUMARO_PRECOMPILE OFF)
endif()

# A target that holds one set of compiled headers; its options are those of the targets that share it.
function(lumaro_make_headers name header)
    cmake_parse_arguments(PARSE_ARGV 2 ARG "" "" "LIBRARIES;DEFINITIONS;OPTIONS")
    file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" CONTENT "")
    add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
    target_precompile_headers(${name} PRIVATE "<LumaroCore/Precompiled/${header}>")
endfunction()

# Lets targets read the compiled headers of `name`, with whose definitions they are compiled from then on.
function(lumaro_share_headers name)
    if(LUMARO_PRECOMPILE)
        get_target_property(definitions ${name} COMPILE_DEFINITIONS)
        foreach(target IN LISTS ARGN)
            target_precompile_headers(${target} REUSE_FROM ${name})
            if(definitions)
                target_compile_definitions(${target} PRIVATE ${definitions})
            endif()
        endforeach()
    endif()
endfunction()
