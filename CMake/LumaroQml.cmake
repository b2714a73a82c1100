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
    # Nor is what the build tools of QML write.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    if(sources)
        set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS "-w" SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_KEYWORDS QT_NO_FOREACH)
    # What the build tools of QML write includes its headers by their names alone.
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()
