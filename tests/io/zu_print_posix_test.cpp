#include "zu_print_test.h"

#include <cstdarg>
#include <gtest/gtest.h>
#include <syslog.h>

std::vector<std::string> logged;

// These take the place of the C library's.
extern "C" void syslog( int priority, const char *format, ... ) __attribute__( ( format( printf, 2, 3 ) ) );
extern "C" void __syslog_chk( int priority, int flag, const char *format, ... )
    __attribute__( ( format( printf, 3, 4 ) ) );
__attribute__( ( format( printf, 2, 0 ) ) ) static void logLine( int priority, const char *format, va_list args )
{
    char line[ 200 ];
    vsnprintf( line, sizeof line, format, args );
    EXPECT_EQ( priority, LOG_DEBUG );
    logged.emplace_back( line );
}
extern "C" void syslog( int priority, const char *format, ... )
{
    va_list args;
    va_start( args, format );
    logLine( priority, format, args );
    va_end( args );
}
extern "C" void __syslog_chk( int priority, int, const char *format, ... )
{
    va_list args;
    va_start( args, format );
    logLine( priority, format, args );
    va_end( args );
}
