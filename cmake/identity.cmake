# What the library says of the product that it is built for, and of the system and machine that it is built on.
#
# Sets the variables that source/zu/runtime/zu_identity.h.in reads.  Needs the compilers and the build type.

set( ZU_PRODUCT_NAME "zelkaratr" CACHE STRING "Product name: lower-case letters and digits, part of file names" )
set( ZU_PRODUCT_FRIENDLY_NAME "Zelkaratr" CACHE STRING "Product name for human readers" )
set( ZU_PRODUCT_VERSION "4.10.30" CACHE STRING "Product version: major.minor.release" )
set( ZU_PRODUCT_VENDOR "VELMORA" CACHE STRING "Vendor of the product" )
set( ZU_PRODUCT_COPYRIGHT "Copyright (c) VELMORA" CACHE STRING "Copyright notice of the product" )
set( ZU_PRODUCT_OS "" CACHE STRING "Operating system to build for, such as debian12; empty: the one of this machine" )
set( ZU_PRODUCT_HARDWARE "" CACHE STRING "Hardware to build for, such as rpi3; empty: by the target processor" )
set( ZU_PRODUCT_VARIANT "" CACHE STRING "release, debug or profile; empty: by the build type" )

# The order counts: the position in a list is the value that the library knows the thing by.
set( ZU___OS_IDENTIFIERS windows debian9 debian10 debian11 debian12 ubuntu1804 ubuntu2004 ubuntu2204 rhel8 rhel9 macosx )
set( ZU___OS_FRIENDLY_NAMES
    "Windows" "Debian 9" "Debian 10" "Debian 11" "Debian 12" "Ubuntu 18.04" "Ubuntu 20.04" "Ubuntu 22.04" "RHEL 8"
    "RHEL 9" "MacOSX" )
set( ZU___HARDWARE_IDENTIFIERS x32 x64 rpi2 rpi3 armhf arm64 riscv64 )
set( ZU___HARDWARE_FRIENDLY_NAMES
    "x86 (32 bit)" "x86 (64 bit)" "Raspberry Pi 2" "Raspberry Pi 3" "Generic ARM (armhf)" "Generic ARM (arm64)"
    "Generic RISC-V" )
set( ZU___VARIANT_IDENTIFIERS release debug profile )
set( ZU___VARIANT_FRIENDLY_NAMES "Release" "Debug" "Profile" )

# Product: what goes into file names, into C texts and into records that other programs read is checked here.
foreach( rule
        "ZU_PRODUCT_NAME=^[a-z][a-z0-9]*$=32"
        "ZU_PRODUCT_FRIENDLY_NAME=^[A-Za-z0-9]+( [A-Za-z0-9]+)*$=100"
        "ZU_PRODUCT_VENDOR=^[A-Za-z0-9-]+( [A-Za-z0-9-]+)*$=100"
        "ZU_PRODUCT_COPYRIGHT=^[A-Za-z0-9(),.:;@-]+( [A-Za-z0-9(),.:;@-]+)*$=100"
        "ZU_PRODUCT_VERSION=^(0|[1-9][0-9]*)\\.(0|[1-9][0-9]*)\\.(0|[1-9][0-9]*)$=56" )
    string( REGEX MATCH "^([A-Z_]+)=(.*)=([0-9]+)$" rule "${rule}" )
    set( variable ${CMAKE_MATCH_1} )
    set( pattern "${CMAKE_MATCH_2}" )
    set( most ${CMAKE_MATCH_3} )
    string( LENGTH "${${variable}}" length )
    if( length GREATER most OR NOT "${${variable}}" MATCHES "${pattern}" )
        message( FATAL_ERROR "${variable} must be of the form ${pattern}, at most ${most} characters: ${${variable}}" )
    endif()
endforeach()
string( REPLACE "." ";" parts "${ZU_PRODUCT_VERSION}" )
list( GET parts 0 ZU___PRODUCT_VERSION_MAJOR )
list( GET parts 1 ZU___PRODUCT_VERSION_MINOR )
list( GET parts 2 ZU___PRODUCT_VERSION_RELEASE )

# The time of the last configuration; follows SOURCE_DATE_EPOCH where it is set, so that builds can be reproduced.
string( TIMESTAMP ZU___PRODUCT_BUILD_TIME "UTC %Y-%m-%d %H:%M:%S (%A)" UTC )

# Sets `result` to the identifier out of `number=identifier` arguments whose number comes nearest to `number`; of two
# that are equally near the earlier argument wins.
function( zu_nearest result number )
    set( least -1 )
    foreach( candidate ${ARGN} )
        string( REPLACE "=" ";" candidate ${candidate} )
        list( GET candidate 0 candidate_number )
        list( GET candidate 1 candidate_identifier )
        math( EXPR distance "${candidate_number} - ${number}" )
        if( distance LESS 0 )
            math( EXPR distance "0 - ${distance}" )
        endif()
        if( least LESS 0 OR distance LESS least )
            set( least ${distance} )
            set( ${result} ${candidate_identifier} PARENT_SCOPE )
        endif()
    endforeach()
endfunction()

# Sets `result` to the identifier of the listed Linux distribution that is, or comes nearest to, the one that the text
# of an os-release file tells of.
function( zu_identify_distribution result os_release )
    foreach( key ID ID_LIKE VERSION_ID VERSION_CODENAME UBUNTU_CODENAME DEBIAN_CODENAME PRETTY_NAME )
        set( ${key} "" )
        if( "\n${os_release}" MATCHES "\n${key}=[\"']?([^\"'\n]*)" )
            set( ${key} "${CMAKE_MATCH_1}" )
        endif()
    endforeach()
    # A derivative counts versions of its own, but tells what it derives from by that one's code name.
    set( exact FALSE )
    set( derivative TRUE )
    if( ID MATCHES "^(debian|ubuntu|rhel)$" )
        set( derivative FALSE )
    endif()
    foreach( name stretch=debian:9 buster=debian:10 bullseye=debian:11 bookworm=debian:12
             bionic=ubuntu:18.04 focal=ubuntu:20.04 jammy=ubuntu:22.04 )
        string( REGEX MATCH "^(.*)=(.*):(.*)$" name ${name} )
        if( CMAKE_MATCH_1 IN_LIST VERSION_CODENAME OR CMAKE_MATCH_1 IN_LIST UBUNTU_CODENAME
                OR CMAKE_MATCH_1 IN_LIST DEBIAN_CODENAME )
            set( ID ${CMAKE_MATCH_2} )
            set( VERSION_ID ${CMAKE_MATCH_3} )
            break()
        endif()
    endforeach()

    string( REGEX MATCHALL "[0-9]+" numbers "${VERSION_ID}" )
    list( APPEND numbers 0 0 )
    list( GET numbers 0 first )
    list( GET numbers 1 second )
    set( family "${ID} ${ID_LIKE}" )
    if( ID STREQUAL "ubuntu" )
        math( EXPR months "12 * ${first} + ${second}" )
        zu_nearest( identifier ${months} 220=ubuntu1804 244=ubuntu2004 268=ubuntu2204 )
        if( VERSION_ID MATCHES "^(18|20|22)\\.04$" )
            set( exact TRUE )
        endif()
    elseif( family MATCHES "ubuntu" )
        set( identifier ubuntu2204 )
    elseif( family MATCHES "debian|raspbian" )
        # The version that is being made for the next release has no number yet.
        if( first EQUAL 0 )
            set( first 12 )
        endif()
        zu_nearest( identifier ${first} 9=debian9 10=debian10 11=debian11 12=debian12 )
        if( VERSION_ID MATCHES "^(9|10|11|12)$" )
            set( exact TRUE )
        endif()
    elseif( family MATCHES "rhel|fedora|centos" )
        zu_nearest( identifier ${first} 9=rhel9 8=rhel8 )
        if( first MATCHES "^(8|9)$" )
            set( exact TRUE )
        endif()
    else()
        set( identifier debian12 )
    endif()
    if( derivative OR NOT exact )
        message( STATUS "Operating system \"${PRETTY_NAME}\" is not listed and counts as ${identifier}" )
    endif()
    set( ${result} ${identifier} PARENT_SCOPE )
endfunction()

# Operating system
set( ZU___OS_IDENTIFIER "${ZU_PRODUCT_OS}" )
if( NOT ZU___OS_IDENTIFIER )
    if( WIN32 )
        set( ZU___OS_IDENTIFIER windows )
    elseif( APPLE )
        set( ZU___OS_IDENTIFIER macosx )
    else()
        set( os_release "" )
        foreach( file "${CMAKE_SYSROOT}/etc/os-release" "${CMAKE_SYSROOT}/usr/lib/os-release" )
            if( EXISTS "${file}" )
                file( READ "${file}" os_release )
                break()
            endif()
        endforeach()
        zu_identify_distribution( ZU___OS_IDENTIFIER "${os_release}" )
    endif()
endif()

# Hardware.  A processor of 64 bits may be the target of a build for 32.
set( ZU___HARDWARE_IDENTIFIER "${ZU_PRODUCT_HARDWARE}" )
if( NOT ZU___HARDWARE_IDENTIFIER )
    string( TOLOWER "${CMAKE_SYSTEM_PROCESSOR}" processor )
    if( processor MATCHES "^(x86_64|amd64|x64|i[3-6]86|x86)$" )
        set( narrow x32 )
        set( wide x64 )
    elseif( processor MATCHES "^(aarch64|arm64|arm)" )
        set( narrow armhf )
        set( wide arm64 )
    elseif( processor MATCHES "^riscv64" AND CMAKE_SIZEOF_VOID_P EQUAL 8 )
        set( wide riscv64 )
    else()
        message( FATAL_ERROR
            "Hardware \"${CMAKE_SYSTEM_PROCESSOR}\" is not listed: set ZU_PRODUCT_HARDWARE to one of "
            "${ZU___HARDWARE_IDENTIFIERS}" )
    endif()
    if( CMAKE_SIZEOF_VOID_P EQUAL 8 )
        set( ZU___HARDWARE_IDENTIFIER ${wide} )
    else()
        set( ZU___HARDWARE_IDENTIFIER ${narrow} )
    endif()
endif()

# Variant
set( ZU___VARIANT_IDENTIFIER "${ZU_PRODUCT_VARIANT}" )
if( NOT ZU___VARIANT_IDENTIFIER )
    string( TOLOWER "${CMAKE_BUILD_TYPE}" ZU___VARIANT_IDENTIFIER )
    if( NOT ZU___VARIANT_IDENTIFIER MATCHES "^(debug|profile)$" )
        set( ZU___VARIANT_IDENTIFIER release )
    endif()
endif()

foreach( what OS HARDWARE VARIANT )
    list( FIND ZU___${what}_IDENTIFIERS "${ZU___${what}_IDENTIFIER}" ZU___${what} )
    if( ZU___${what} EQUAL -1 )
        message( FATAL_ERROR
            "ZU_PRODUCT_${what} must be one of ${ZU___${what}_IDENTIFIERS}: ${ZU___${what}_IDENTIFIER}" )
    endif()
    list( GET ZU___${what}_FRIENDLY_NAMES ${ZU___${what}} ZU___${what}_FRIENDLY_NAME )
endforeach()
message( STATUS "Product: ${ZU_PRODUCT_NAME} ${ZU_PRODUCT_VERSION}, ${ZU___OS_FRIENDLY_NAME}, \
${ZU___HARDWARE_FRIENDLY_NAME}, ${ZU___VARIANT_FRIENDLY_NAME}" )
