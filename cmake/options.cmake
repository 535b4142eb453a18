# Compiler settings: zu_code for everything that is built here, zu_library_code on top of it for the library.

set( CMAKE_CXX_STANDARD 20 )
set( CMAKE_CXX_STANDARD_REQUIRED ON )
set( CMAKE_CXX_EXTENSIONS OFF )
set( CMAKE_C_STANDARD 11 )
set( CMAKE_C_STANDARD_REQUIRED ON )
set( CMAKE_C_EXTENSIONS OFF )
set( CMAKE_EXPORT_COMPILE_COMMANDS ON )
set( CMAKE_POSITION_INDEPENDENT_CODE ON )
# Programs find the library relative to themselves, so that none of them knows the folder that it was built in.
set( CMAKE_BUILD_RPATH_USE_ORIGIN ON )

if( NOT CMAKE_BUILD_TYPE )
    set( CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE )
endif()
# What a profiler reads best: the release build with frame pointers.
set( CMAKE_C_FLAGS_PROFILE "-O2 -g -fno-omit-frame-pointer" CACHE STRING "C flags of profile builds" )
set( CMAKE_CXX_FLAGS_PROFILE "-O2 -g -fno-omit-frame-pointer" CACHE STRING "C++ flags of profile builds" )
mark_as_advanced( CMAKE_C_FLAGS_PROFILE CMAKE_CXX_FLAGS_PROFILE )

find_program( CCACHE ccache )
mark_as_advanced( CCACHE )
if( CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER )
    set( CMAKE_C_COMPILER_LAUNCHER ${CCACHE} )
    set( CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE} )
endif()
find_package( Threads REQUIRED )
# What the library is linked with, and how the files of modules end
set( ZU_SYSTEM_LIBRARIES m ${CMAKE_DL_LIBS} )
set( ZU_MODULE_SUFFIX .so )
if( WIN32 )
    set( ZU_SYSTEM_LIBRARIES advapi32 dbghelp netapi32 ole32 shell32 shlwapi synchronization )
    set( ZU_MODULE_SUFFIX .dll )
    # Debuggers there read version 4 of DWARF, as does DbgHelp under Wine.
    string( APPEND CMAKE_C_FLAGS " -gdwarf-4" )
    string( APPEND CMAKE_CXX_FLAGS " -gdwarf-4" )
    # A program looks for its libraries where it is itself.
    set( CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin )
endif()

set( ZU_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them" )
# For the project's own checks: a compiler that nobody here has seen yet may warn of anything.
option( ZU_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF )

add_library( zu_code INTERFACE )
target_include_directories( zu_code INTERFACE ${PROJECT_SOURCE_DIR}/source ${PROJECT_BINARY_DIR}/generated )
# Failed checks name their file relative to the repository, on every machine alike.
target_compile_options( zu_code INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= )
# In its DWARF 5 clang has the file of a unit lie below the folder of the build, whence the lines of stack traces would
# name a file that is not there.
target_compile_options( zu_code INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-gdwarf-4> )
target_compile_options( zu_code INTERFACE
    -Wall -Wextra -Wshadow -Wpointer-arith -Wcast-qual -Wformat=2 -Wundef -Wvla -Wmissing-declarations
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>
    $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op -Wduplicated-cond -Wduplicated-branches>
    $<$<BOOL:${ZU_WARNINGS_AS_ERRORS}>:-Werror> )
target_compile_options( zu_code INTERFACE
    -fstack-protector-strong -fasynchronous-unwind-tables
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2> )
if( ZU_SANITIZE )
    target_compile_options( zu_code INTERFACE
        -fsanitize=${ZU_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # What gcc finds uninitialised in instrumented code of the standard library is not.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized> )
    target_link_options( zu_code INTERFACE -fsanitize=${ZU_SANITIZE} )
elseif( NOT APPLE AND NOT WIN32 ) # for Windows gcc ends with an error of its own there
    target_compile_options( zu_code INTERFACE -fstack-clash-protection )
endif()
target_link_libraries( zu_code INTERFACE Threads::Threads )
if( WIN32 )
    # Windows 10.  What MinGW's printf takes is what C tells, and programs bring its libraries along.  Visibility is a
    # matter of the list of exported names there, and attributes that tell it are passed over.
    target_compile_definitions( zu_code INTERFACE _WIN32_WINNT=0x0A00 __USE_MINGW_ANSI_STDIO=1 )
    target_compile_options( zu_code INTERFACE -Wno-attributes )
    target_link_options( zu_code INTERFACE -static -fstack-protector-strong )
else()
    target_compile_options( zu_code INTERFACE -fno-plt )
    target_link_options( zu_code INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack )
    if( CMAKE_SIZEOF_VOID_P EQUAL 4 )
        # Files of 2 GB and more, and times from 2038 on
        target_compile_definitions( zu_code INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64 )
    endif()
endif()

# -fstack-usage leaves a file beside each object that tells the frame of every function; scripts/check_library.py reads
# them.  The warning reports a frame that is too large where it is written.
add_library( zu_library_code INTERFACE )
target_link_libraries( zu_library_code INTERFACE zu_code )
target_compile_definitions( zu_library_code INTERFACE ZU___BUILDING_LIBRARY )
target_compile_options( zu_library_code INTERFACE
    -fvisibility=hidden -fno-semantic-interposition -fstack-usage
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fvisibility-inlines-hidden>
    -Wconversion -Wno-sign-conversion )
if( NOT ZU_SANITIZE )
    target_compile_options( zu_library_code INTERFACE -Wframe-larger-than=16384 )
endif()
