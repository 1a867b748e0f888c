# Debian packages of the installed tree: the program, and what a plug-in is built with. Made by ./package.
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL typloom typloom-dev)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/PackageDocuments.cmake)

set(CPACK_PACKAGE_CONTACT "The Typloom developers <typloom@typloom.org>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${CMAKE_BINARY_DIR}/Platform
    ${CMAKE_BINARY_DIR}/Typloom/TyploomCore
    ${CMAKE_BINARY_DIR}/Typloom/TyploomKit
    ${CMAKE_BINARY_DIR}/Typloom/TyploomApp)

set(CPACK_COMPONENT_TYPLOOM_DESCRIPTION "explore and edit variable font families
Typloom opens a variable font family, a designspace file with its UFO sources,
and shows it as it looks at any place of its design space. A sidebar has a
slider for each axis of the font and of the edited glyph; glyphs can have
axes and layers of their own.")
set(CPACK_DEBIAN_TYPLOOM_PACKAGE_NAME typloom)
set(CPACK_DEBIAN_TYPLOOM_PACKAGE_SECTION fonts)
set(CPACK_DEBIAN_TYPLOOM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TYPLOOM_PACKAGE_RECOMMENDS qt6-wayland)

set(CPACK_COMPONENT_TYPLOOM-DEV_DESCRIPTION "write plug-ins for the font editor Typloom
Headers, a CMake package, and an example of a plug-in for Typloom, which
opens variable font families. A plug-in adds tabs to the sidebar.")
set(CPACK_DEBIAN_TYPLOOM-DEV_PACKAGE_NAME typloom-dev)
set(CPACK_DEBIAN_TYPLOOM-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TYPLOOM-DEV_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_TYPLOOM-DEV_PACKAGE_DEPENDS "typloom (= ${PROJECT_VERSION})")
include(CPack)
