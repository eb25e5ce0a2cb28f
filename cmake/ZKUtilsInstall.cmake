# Installation: the library, its public headers under include/ZKUtils/, a CMake
# package (find_package(ZKUtils CONFIG) -> ZKUtils::ZKUtils) and zkutils.pc.
include(CMakePackageConfigHelpers)

install(TARGETS ZKUtils
    EXPORT ZKUtilsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${CMAKE_INSTALL_INCLUDEDIR}/ZKUtils)

install(FILES ${ZKUTILS_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZKUtils)

install(EXPORT ZKUtilsTargets
    NAMESPACE ZKUtils::
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZKUtils)

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/ZKUtilsConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/ZKUtilsConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZKUtils)
write_basic_package_version_file(
    ${CMAKE_CURRENT_BINARY_DIR}/ZKUtilsConfigVersion.cmake
    VERSION ${PROJECT_VERSION}
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/ZKUtilsConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/ZKUtilsConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZKUtils)

# The .pc file finds its prefix from its own folder, so the install can move.
file(RELATIVE_PATH ZKUTILS_PC_TO_PREFIX
    /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/zkutils.pc.in ${CMAKE_CURRENT_BINARY_DIR}/zkutils.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zkutils.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
