# SPDX-License-Identifier: Apache-2.0
# The Debian packages, one for each component.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumaro)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "Lumaro <packages@lumaro.app>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://lumaro.app")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL application room room-server ctl)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# What QML names is seen by no linker.
set(qml_modules qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-window
    qml6-module-qtquick-templates qml6-module-qtquick-shapes)
list(JOIN qml_modules ", " qml_modules)

function(lumaro_package component name section summary)
    cmake_parse_arguments(PARSE_ARGV 4 ARG "ALL_ARCHITECTURES" "DEPENDS;RECOMMENDS;SUGGESTS;DESCRIPTION" "")
    string(TOUPPER "${component}" key)
    set(of "CPACK_DEBIAN_${key}")
    # The documentation that every package has.
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/doc/${name}")
    set(LUMARO_PACKAGE "${name}")
    configure_file(Debian/changelog.in "${folder}/changelog" @ONLY)
    execute_process(COMMAND gzip -9nf "${folder}/changelog")
    install(FILES "${folder}/changelog.gz" Debian/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component}
        EXCLUDE_FROM_ALL)
    set(${of}_PACKAGE_NAME "${name}" PARENT_SCOPE)
    set(${of}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
    # The first line of a description is its summary.
    set(${of}_DESCRIPTION "${summary}\n${ARG_DESCRIPTION}" PARENT_SCOPE)
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${ARG_DESCRIPTION}" PARENT_SCOPE)
    foreach(relation DEPENDS RECOMMENDS SUGGESTS)
        set(${of}_PACKAGE_${relation} "${ARG_${relation}}" PARENT_SCOPE)
    endforeach()
    if(ARG_ALL_ARCHITECTURES)
        set(${of}_PACKAGE_ARCHITECTURE all PARENT_SCOPE)
        set(${of}_PACKAGE_SHLIBDEPS OFF PARENT_SCOPE)
    endif()
endfunction()

lumaro_package(application lumaro net "one board for two people, behind the icons of their desktops"
    DEPENDS "${qml_modules}, hicolor-icon-theme"
    RECOMMENDS "lumaro-room, fonts-noto-color-emoji, fonts-noto-cjk, qt6-image-formats-plugins, qt6-wayland, gnome-keyring | kwalletmanager"
    SUGGESTS "lumaroctl"
    DESCRIPTION "What one of the two puts up, the other one sees: notes, photos, stickers,
doodles, a countdown to the next time, and live cards of the other's music,
place and day.
.
It hangs behind the icons and opens in a window. Edits reach the other within
a blink; offline, nothing is lost. There is no account and no tracking: the
two meet in a room that either of them, a friend or a service runs.")
lumaro_package(room lumaro-room net "room where the devices of two people meet"
    SUGGESTS "lumaro-room-server"
    DESCRIPTION "The room and the pairing service of Lumaro boards: one program with one file.
.
This is the program alone, as the application starts it for itself. What runs
it as a service of the system is in lumaro-room-server.")
lumaro_package(room-server lumaro-room-server net "room of Lumaro boards as a service of the system"
    ALL_ARCHITECTURES
    DEPENDS "lumaro-room (>= ${PROJECT_VERSION})"
    SUGGESTS "caddy | nginx"
    DESCRIPTION "Runs lumaro-room under systemd, in a sandbox and under a user of its own, for
everybody who knows its address.
.
It listens on this computer alone; a proxy with a certificate stands before
it. Examples for nginx and Caddy are included.")
lumaro_package(ctl lumaroctl net "board of two people from a terminal"
    DESCRIPTION "Starts and joins a Lumaro board, watches it, puts things up and takes them
down, by itself or through the application that runs. Also the board's rules
as filters, for scripts.")
set(CPACK_DEBIAN_ROOM-SERVER_PACKAGE_CONTROL_EXTRA
    "${CMAKE_CURRENT_SOURCE_DIR}/Debian/postinst;${CMAKE_CURRENT_SOURCE_DIR}/Debian/prerm;${CMAKE_CURRENT_SOURCE_DIR}/Debian/postrm;${CMAKE_CURRENT_SOURCE_DIR}/Debian/conffiles")
if(TARGET lumaro-cityview)
    list(APPEND CPACK_COMPONENTS_ALL cityview)
    lumaro_package(cityview lumaro-cityview net "window on the partner's city, drawn by a page"
        DESCRIPTION "Has the page of a room's owner draw the partner's city, where a room names
such a page. Lumaro does without it, and paints a window of its own.")
endif()
include(CPack)
