# Three Debian packages of what is installed: what programs run with, what they are built with, the command line.
# scripts/make-package makes them.
set(soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(same_version "(= ${PROJECT_VERSION})")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "configuration data of steel detailing")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "KorOdbc developers <developers@korodbc.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL libraries development program)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY =)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
file(WRITE ${package_build}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${package_build}/triggers)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Debian wants the changes in a form of its own.
file(READ CHANGES.md changes)
string(REGEX REPLACE "^.*one line for each[^\n]*\n\n" "" changes "${changes}")
string(REGEX REPLACE "(^|\n)(- |  )" "\\1  \\2" changes "${changes}")
string(REGEX REPLACE "(^|\n)  - " "\\1  * " changes "${changes}")
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${package_build}/changelog
    "korodbc (${PROJECT_VERSION}) unstable; urgency=medium\n\n${changes}\n -- ${CPACK_PACKAGE_CONTACT}  ${now}\n")
execute_process(COMMAND gzip -9nf ${package_build}/changelog COMMAND_ERROR_IS_FATAL ANY)

# korodbc_package(COMPONENT NAME SECTION DESCRIPTION)
function(korodbc_package component name section description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
    # every package has a folder of documents with who made it and what is new in it
    install(FILES cmake/copyright ${package_build}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()
korodbc_package(libraries libkorodbc${soversion} libs
"KorOdbc keeps the configuration tables of steel detailing as typed records,
edits them under copies and moves detail styles between databases.
.
This package has the libraries that programs run with.")
korodbc_package(development libkorodbc-dev libdevel
"KorOdbc keeps the configuration tables of steel detailing as typed records,
edits them under copies and moves detail styles between databases.
.
This package has the headers, and the files with which CMake and pkg-config
find the libraries.")
korodbc_package(program korodbc utils
"The command line makes repositories from the catalogue, looks sections and
bolts up, edits tables, moves detail styles and processes between databases
and merges duplicates.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libkorodbc${soversion} ${same_version}, korodbc ${same_version}, libsqlite3-dev, libre2-dev, pkg-config")
include(CPack)
