# cmake --install: the program, its private libraries and plug-ins in a folder of their own, the sample family,
# the desktop's files, and for the writers of plug-ins the headers and a CMake package.
#
# The program finds the libraries and PlugIns relative to itself, so that an installed tree can be moved.
# To be included before the rooms.
include(GNUInstallDirs)
set(TYPLOOM_LIBRARIES ${CMAKE_INSTALL_LIBDIR}/typloom/Libraries)
set(TYPLOOM_PLUGINS ${CMAKE_INSTALL_LIBDIR}/typloom/PlugIns)
file(RELATIVE_PATH TYPLOOM_HOME_FROM_PROGRAM ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/typloom)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME typloom)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # The tests are none of what is installed.

# install_library(TARGET): one of the libraries that program and plug-ins share.
function(install_library target)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN")
    install(TARGETS ${target} LIBRARY DESTINATION ${TYPLOOM_LIBRARIES})
endfunction()

# install_headers(FOLDER HEADER...): what a plug-in may include.
function(install_headers folder)
    list(TRANSFORM ARGN PREPEND ${CMAKE_SOURCE_DIR}/${folder}/)
    install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/typloom/${folder} COMPONENT typloom-dev)
endfunction()
