# Debian packages, by CPack: the library, what a developer needs, the command.  scripts/package.sh makes them of a build
# whose prefix is /usr, since the library looks for the machine's settings where its prefix says.

# Whom the packages name as their maintainer: as Debian's own tools take it from the environment.  A package that somebody
# has made for himself says so, with an address that never reaches anybody (RFC 2606).
set( ZU_PACKAGE_CONTACT "" CACHE STRING "The packages' maintainer, \"Name <address>\"; empty: DEBFULLNAME and DEBEMAIL" )
set( contact "${ZU_PACKAGE_CONTACT}" )
if( NOT contact AND NOT "$ENV{DEBEMAIL}" STREQUAL "" )
    set( contact "$ENV{DEBFULLNAME} <$ENV{DEBEMAIL}>" )
elseif( NOT contact )
    set( contact "Local build of zu <zu@localhost.invalid>" )
endif()
set( version "${PROJECT_VERSION}-1" )
set( library "libzu${PROJECT_VERSION_MAJOR}" )

set( CPACK_GENERATOR DEB )
set( CPACK_PACKAGE_CONTACT "${contact}" )
set( CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages )
set( CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX} )
set( CPACK_COMPONENTS_ALL runtime development tool )
if( ZU_RACE_TWINS )
    list( APPEND CPACK_COMPONENTS_ALL races )
endif()
set( CPACK_DEB_COMPONENT_INSTALL ON )
set( CPACK_DEBIAN_FILE_NAME DEB-DEFAULT )
set( CPACK_DEBIAN_COMPRESSION_TYPE xz )
set( CPACK_DEBIAN_PACKAGE_RELEASE 1 )
set( CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON )

# A program that was linked with this version may need all that is in it.
set( CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library} )
set( CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs )
set( CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON )
set( CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON )
set( CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=" )
set( CPACK_COMPONENT_RUNTIME_DESCRIPTION "Reference-counted objects, Unicode text, containers and settings that are
values, a format language, threads, streams and character sets, behind a flat
C interface." )
# Stripped of what debuggers need, which goes to packages of its own
set( CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON )
set( CPACK_DEBIAN_TOOL_DEBUGINFO_PACKAGE ON )

set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzu-dev )
set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel )
set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${version}), libc6-dev" )
set( CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "${library}-dbgsym (= ${version}), gdb, pkg-config" )
set( CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers for C and C++, the libraries to link with, what CMake, pkg-config and
gdb read, documentation and examples." )

# For who looks for races in a program: hardly every developer, and as large as all the rest
set( CPACK_DEBIAN_RACES_PACKAGE_NAME libzu-race-dev )
set( CPACK_DEBIAN_RACES_PACKAGE_SECTION libdevel )
set( CPACK_DEBIAN_RACES_PACKAGE_DEPENDS "libzu-dev (= ${version})" )
set( CPACK_DEBIAN_RACES_PACKAGE_SUGGESTS "valgrind" )
set( CPACK_COMPONENT_RACES_DESCRIPTION "The library as programs need it that are run under the thread sanitizer or under
helgrind." )

set( CPACK_DEBIAN_TOOL_PACKAGE_NAME zu )
set( CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils )
set( CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library} (= ${version})" )
set( CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON )
set( CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/source )
set( CPACK_COMPONENT_TOOL_DESCRIPTION "The command zu tells what is in a text, converts between character sets and reads and writes
settings." )
include( CPack )
