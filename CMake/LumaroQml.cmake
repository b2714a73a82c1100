# SPDX-License-Identifier: Apache-2.0
# A library with windows in it: its QML files and C++ types are one module, which lives in the folder that its URI names.

set(QT_QML_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/qml")

function(lumaro_add_qml_module target uri)
    cmake_parse_arguments(PARSE_ARGV 2 ARG "" "" "QML;RESOURCES;DEPENDENCIES")
    foreach(file IN LISTS ARG_QML)
        # A type is named for its file, wherever in the module the file lies.
        get_filename_component(type "${file}" NAME_WE)
        set_source_files_properties("${file}" PROPERTIES QT_QML_SOURCE_TYPENAME "${type}")
    endforeach()
    lumaro_use_moc(${target})
    # QML that is compiled ahead starts faster, which no build for tests needs.
    set(ahead "")
    if(LUMARO_SANITIZERS OR LUMARO_TIDY)
        set(ahead NO_CACHEGEN)
    endif()
    qt_add_qml_module(${target}
        URI ${uri}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        IMPORT_PATH "${QT_QML_OUTPUT_DIRECTORY}"
        DEPENDENCIES QtQuick ${ARG_DEPENDENCIES}
        QML_FILES ${ARG_QML}
        RESOURCES ${ARG_RESOURCES}
        ${ahead}
    )
    # What the build tools of QML write is not ours to warn of, and compiles several times faster when a few files are read as one.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    if(sources)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP UNITY_BUILD_CODE_BEFORE_INCLUDE
            "#pragma GCC diagnostic ignored \"-Wshadow\"\n#pragma GCC diagnostic ignored \"-Wconversion\"")
        set(place 0)
        foreach(source IN LISTS sources)
            math(EXPR group "${place} / 8")
            set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "qml${group}" SKIP_UNITY_BUILD_INCLUSION OFF)
            math(EXPR place "${place} + 1")
        endforeach()
    endif()
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_KEYWORDS QT_NO_FOREACH)
    # What the build tools of QML write includes its headers by their names alone.
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()
