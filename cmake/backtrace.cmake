# libbacktrace, as gcc brings it along for its own use: it knows names, files and lines by address.
#
# Sets ZU_BACKTRACE_OBJECTS to what of it becomes part of the library, shared and static alike, so that an installed
# library depends on no compiler's folder; empty where it is not found.  Its header is copied, since its folder holds the
# compiler's own headers.

option( ZU_WITH_BACKTRACE "Show source files and lines in stack traces, by the compiler's libbacktrace where it is found" ON )

set( ZU_BACKTRACE_OBJECTS "" )
if( ZU_WITH_BACKTRACE AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" )
    separate_arguments( flags NATIVE_COMMAND "${CMAKE_CXX_FLAGS}" )
    execute_process(
        COMMAND ${CMAKE_CXX_COMPILER} ${flags} -print-file-name=libbacktrace.a
        OUTPUT_VARIABLE archive OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET )
    cmake_path( GET archive PARENT_PATH folder )
    set( objects_folder ${PROJECT_BINARY_DIR}/backtrace )
    foreach( header "${folder}/include/backtrace.h" "${folder}/../include/backtrace.h" )
        if( EXISTS "${archive}" AND EXISTS "${header}" )
            configure_file( "${header}" ${PROJECT_BINARY_DIR}/generated/backtrace/backtrace.h COPYONLY )
            # Aside first, since an object that is written anew has everything linked anew.
            file( MAKE_DIRECTORY ${objects_folder}/extracted )
            execute_process( COMMAND ${CMAKE_AR} x "${archive}"
                WORKING_DIRECTORY ${objects_folder}/extracted RESULT_VARIABLE failure )
            if( NOT failure )
                # The library walks stacks, prints, and gets memory by itself.
                foreach( object atomic dwarf elf fileline posix sort state )
                    if( EXISTS ${objects_folder}/extracted/${object}.o )
                        file( COPY_FILE ${objects_folder}/extracted/${object}.o ${objects_folder}/${object}.o
                            ONLY_IF_DIFFERENT )
                        list( APPEND ZU_BACKTRACE_OBJECTS ${objects_folder}/${object}.o )
                    endif()
                endforeach()
            endif()
            break()
        endif()
    endforeach()
endif()
if( ZU_BACKTRACE_OBJECTS )
    set( message "names, files and lines by ${archive}" )
else()
    set( message "exported names only" )
endif()
message( STATUS "Stack traces: ${message}" )
