# What goes to a user: both libraries, the public headers, the tool, and what find_package and pkg-config read.  All of
# it finds its parts relative to itself, so that an installed tree can be moved.

include( CMakePackageConfigHelpers )
set( package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zu )
set( pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig )

install( TARGETS zu EXPORT zu
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} )
install( TARGETS zu_static EXPORT zu
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} )
# The twins for those who look for races are no part of what find_package must find.
foreach( twin ${ZU_RACE_TWINS} )
    string( REPLACE "zu_" "" tool ${twin} )
    install( TARGETS ${twin} EXPORT zu_races
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/zu/${tool} COMPONENT races
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} )
    list( APPEND pkgconfig_twins zu-${tool}.pc )
endforeach()
if( TARGET zu_tool )
    if( NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr" ) # where the loader looks by itself
        file( RELATIVE_PATH library_dir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR} )
        set_target_properties( zu_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${library_dir}" )
    endif()
    install( TARGETS zu_tool RUNTIME COMPONENT tool )
endif()
# gdb reads it when it sees the library, where it trusts the folder.  It trusts none beside the system's libraries, and
# looks for what belongs to those below one that it does.
set( gdb_dir ${CMAKE_INSTALL_LIBDIR} )
if( CMAKE_INSTALL_PREFIX STREQUAL "/usr" )
    set( gdb_dir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR} )
endif()
set( library_file libzu.so.${PROJECT_VERSION} )
if( WIN32 )
    set( gdb_dir ${CMAKE_INSTALL_BINDIR} )
    set( library_file zu.dll )
endif()
install( FILES tools/gdb/libzu-gdb.py DESTINATION ${gdb_dir} RENAME ${library_file}-gdb.py COMPONENT development )
install( FILES LICENSE NOTICE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime )
install( FILES README.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development )
install( DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development )
# What the documents tell of headers leads to where these are installed.
set( installed_docs "${CMAKE_INSTALL_DOCDIR}" )
if( NOT IS_ABSOLUTE "${installed_docs}" )
    string( PREPEND installed_docs "\${CMAKE_INSTALL_PREFIX}/" )
endif()
file( RELATIVE_PATH headers_from_docs ${CMAKE_INSTALL_FULL_DOCDIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR}/zu )
install( CODE "
    file( GLOB documents \"\$ENV{DESTDIR}${installed_docs}/README.md\" \"\$ENV{DESTDIR}${installed_docs}/docs/*.md\" )
    foreach( document IN LISTS documents )
        file( READ \"\${document}\" text )
        string( REPLACE \"](source/zu/\" \"](${headers_from_docs}/\" text \"\${text}\" )
        string( REPLACE \"](../source/zu/\" \"](../${headers_from_docs}/\" text \"\${text}\" )
        file( WRITE \"\${document}\" \"\${text}\" )
    endforeach()" COMPONENT development )

# Each header by itself, not the folder, so that no header of the inside and no stray file slips in.
file( GLOB_RECURSE ZU_PUBLIC_HEADERS CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/source
    ${PROJECT_SOURCE_DIR}/source/zu/*.h ${PROJECT_SOURCE_DIR}/source/zu/*.hpp )
list( FILTER ZU_PUBLIC_HEADERS EXCLUDE REGEX "_internal\\.h$" )
foreach( header ${ZU_PUBLIC_HEADERS} )
    cmake_path( GET header PARENT_PATH folder )
    install( FILES source/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT development )
endforeach()

# find_package( zu ): the targets zu::zu and zu::static
install( EXPORT zu NAMESPACE zu:: FILE zuTargets.cmake DESTINATION ${package_dir} COMPONENT development )
if( ZU_RACE_TWINS )
    install( EXPORT zu_races NAMESPACE zu:: FILE zuRaceTargets.cmake DESTINATION ${package_dir} COMPONENT races )
endif()
configure_package_config_file( cmake/zuConfig.cmake.in ${PROJECT_BINARY_DIR}/zuConfig.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO )
write_basic_package_version_file( ${PROJECT_BINARY_DIR}/zuConfigVersion.cmake COMPATIBILITY SameMajorVersion )
install( FILES ${PROJECT_BINARY_DIR}/zuConfig.cmake ${PROJECT_BINARY_DIR}/zuConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development )

# pkg-config zu, zu-static, and zu-tsan and zu-helgrind for the twins.  The headers are those of a system: what a program
# has its own code warned of is no matter of theirs.  In /usr/include they are that by their place, and an option -isystem would put the C library's
# headers ahead of the C++ library's, which wrap them.
set( PKGCONFIG_INCLUDE_OPTION "-isystem" ) # pkgconf quotes blanks in one argument, if it is the only one
if( CMAKE_INSTALL_PREFIX STREQUAL "/usr" )
    set( PKGCONFIG_INCLUDE_OPTION "-I" )
endif()
file( RELATIVE_PATH PREFIX_FROM_PKGCONFIG /${pkgconfig_dir} / )
foreach( where LIBDIR INCLUDEDIR )
    if( IS_ABSOLUTE "${CMAKE_INSTALL_${where}}" )
        set( PKGCONFIG_${where} "${CMAKE_INSTALL_${where}}" )
    else()
        set( PKGCONFIG_${where} "\${prefix}/${CMAKE_INSTALL_${where}}" )
    endif()
endforeach()
if( IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" )
    set( PKGCONFIG_PREFIX "${CMAKE_INSTALL_PREFIX}" )
else()
    string( REGEX REPLACE "/$" "" PREFIX_FROM_PKGCONFIG "${PREFIX_FROM_PKGCONFIG}" )
    set( PKGCONFIG_PREFIX "\${pcfiledir}/${PREFIX_FROM_PKGCONFIG}" )
endif()
list( TRANSFORM ZU_SYSTEM_LIBRARIES PREPEND -l OUTPUT_VARIABLE PKGCONFIG_SYSTEM_LIBRARIES )
list( JOIN PKGCONFIG_SYSTEM_LIBRARIES " " PKGCONFIG_SYSTEM_LIBRARIES )
if( WIN32 )
    string( APPEND PKGCONFIG_SYSTEM_LIBRARIES " -fstack-protector-strong" )
else()
    string( PREPEND PKGCONFIG_SYSTEM_LIBRARIES "-pthread " )
endif()
foreach( file zu.pc zu-static.pc ${pkgconfig_twins} )
    set( component development )
    if( file IN_LIST pkgconfig_twins )
        set( component races )
    endif()
    configure_file( cmake/${file}.in ${PROJECT_BINARY_DIR}/${file} @ONLY )
    install( FILES ${PROJECT_BINARY_DIR}/${file} DESTINATION ${pkgconfig_dir} COMPONENT ${component} )
endforeach()
