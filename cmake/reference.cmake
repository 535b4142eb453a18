# The reference: the target zu_reference writes it to the folder reference/html of the build, where Doxygen and Python are.

find_package( Doxygen QUIET )
find_package( Python3 COMPONENTS Interpreter QUIET )
if( DOXYGEN_FOUND AND Python3_FOUND )
    configure_file( cmake/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY )
    add_custom_target( zu_reference
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/reference
        COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile
        COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/check_reference.py
            ${PROJECT_BINARY_DIR}/reference/zu.tag
        COMMENT "Writing the reference"
        VERBATIM )
    install( DIRECTORY ${PROJECT_BINARY_DIR}/reference/html DESTINATION ${CMAKE_INSTALL_DOCDIR}/reference
        COMPONENT development OPTIONAL )
endif()
