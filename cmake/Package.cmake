# What a host gets: DLLs with their symbols, import libraries, headers, a CMake package, guides, a host to
# begin with, and the licences of what is linked into the binaries.
include(CMakePackageConfigHelpers)

install(TARGETS vtrutils vtrfutls EXPORT vtrutilsTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# For the pages that are made of them.
set(public_headers "$<TARGET_PROPERTY:vtrutils,HEADER_SET>;$<TARGET_PROPERTY:vtrfutls,HEADER_SET>")
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/public-headers
    CONTENT "$<JOIN:${public_headers},\n>\n")
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/version CONTENT "${PROJECT_VERSION}\n")

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vtrutils)
install(EXPORT vtrutilsTargets NAMESPACE vtrutils:: DESTINATION ${package_folder})
file(RELATIVE_PATH RUNTIME_FROM_PACKAGE /${package_folder} /${CMAKE_INSTALL_BINDIR})
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

file(GLOB guides CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
install(FILES ${guides} DESTINATION ${CMAKE_INSTALL_DOCDIR})

# It builds where it is copied to, with the compiler that built the library.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host-template DESTINATION ${CMAKE_INSTALL_DATADIR}/vtrutils)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-x86_64.cmake
    DESTINATION ${CMAKE_INSTALL_DATADIR}/vtrutils/host-template)
