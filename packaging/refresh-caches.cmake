# Part of `cmake --install` and of its reverse: desktops read these caches instead of the files. Below a
# DESTDIR whoever unpacks it has to see to that.
if(NOT "$ENV{DESTDIR}" STREQUAL "" OR NOT EXISTS "${CMAKE_INSTALL_PREFIX}/share/applications")
    return()
endif()
set(applications "${CMAKE_INSTALL_PREFIX}/share/applications")
find_program(UPDATE_DESKTOP_DATABASE update-desktop-database)
if(UPDATE_DESKTOP_DATABASE)
    execute_process(COMMAND "${UPDATE_DESKTOP_DATABASE}" -q "${applications}")
else()
    message(STATUS "For port:// links install desktop-file-utils, then: update-desktop-database ${applications}")
endif()
# Without a cache icons are looked for one by one, and found.
set(icons "${CMAKE_INSTALL_PREFIX}/share/icons/hicolor")
if(EXISTS "${icons}/icon-theme.cache")
    find_program(UPDATE_ICON_CACHE NAMES gtk-update-icon-cache gtk4-update-icon-cache)
    if(UPDATE_ICON_CACHE)
        execute_process(COMMAND "${UPDATE_ICON_CACHE}" -q -t -f "${icons}")
    else()
        # One that is older than the folder counts for nothing.
        file(TOUCH "${icons}")
    endif()
endif()
