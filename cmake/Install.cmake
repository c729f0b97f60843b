# What is installed: the libraries, which programs of others build against, and the command line with the catalogue.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/KorOdbc)
set(package_build ${PROJECT_BINARY_DIR}/package)

# korodbc_install(EXPORT TARGET...): what a program needs to run belongs to another package than what it is built with
function(korodbc_install export)
    set(libraries)
    foreach(target ${ARGN})
        list(APPEND libraries ${${target}_installed})
    endforeach()
    install(TARGETS ${libraries} EXPORT ${export}
        LIBRARY COMPONENT libraries NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)
    install(EXPORT ${export} NAMESPACE KorOdbc:: DESTINATION ${package_folder} COMPONENT development)
endfunction()

# What names the host is a part of its own, so that who brings another one needs no SQLite.
korodbc_install(KorOdbcTargets korodbc_platform korodbc korodbc_conformance)
if(KORODBC_HOST)
    korodbc_install(KorOdbcHostTargets korodbc_host)
endif()

install(DIRECTORY include/korodbc platform/korodbc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/korodbc/catalogue COMPONENT program)

configure_package_config_file(cmake/KorOdbcConfig.cmake.in ${package_build}/KorOdbcConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${package_build}/KorOdbcConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${package_build}/KorOdbcConfig.cmake ${package_build}/KorOdbcConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)

# pkg-config finds the package from its own place, wherever that is. Archives name what they need, too.
file(RELATIVE_PATH prefix_from_here /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_here ${prefix_from_here})
set(host_needs Requires.private)
if(NOT BUILD_SHARED_LIBS)
    set(host_needs Requires)
endif()
foreach(name korodbc korodbc-host)
    if(name STREQUAL korodbc OR KORODBC_HOST)
        configure_file(cmake/${name}.pc.in ${package_build}/${name}.pc @ONLY)
        install(FILES ${package_build}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
            COMPONENT development)
    endif()
endforeach()
include(cmake/DebianPackages.cmake)
