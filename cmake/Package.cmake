# What a host gets: DLLs, import libraries, headers, a CMake package and the licences of what is
# linked into the binaries.
include(CMakePackageConfigHelpers)

install(TARGETS vtrutils vtrfutls EXPORT vtrutilsTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vtrutils)
install(EXPORT vtrutilsTargets NAMESPACE vtrutils:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/vtrutilsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/vtrutilsConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vtrutilsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vtrutilsConfig.cmake
    ${PROJECT_BINARY_DIR}/vtrutilsConfigVersion.cmake DESTINATION ${package_folder})

# The run-time of the compiler is linked in statically.
set(licence_folder ${CMAKE_INSTALL_DATADIR}/vtrutils/licences)
install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright
    DESTINATION ${licence_folder} RENAME gcc-runtime.txt)
install(FILES /usr/share/doc/mingw-w64-common/copyright
    DESTINATION ${licence_folder} RENAME mingw-w64-runtime.txt)
