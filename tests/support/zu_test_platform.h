// zu_test_platform.h: what the tests' own processes and threads need of each platform.
#pragma once

#include "zu_test_support.h"

// What became of a statement that is to end its process.
struct AbortedRun {
    bool aborted = false;   // it has, as by abort()
    bool elsewhere = false; // it was not run: this process is there for another statement
    std::string report;     // what it wrote to the error stream
};
AbortedRun runAborting( const std::function<void()> &statement );

// Runs the current test in a process of its own, with an environment variable set.  A failure there is one here.
void runThisTest( const std::string &variable, const std::string &value );

// In zu_test_support.cpp

// Returns the name of the current test, as a filter takes it.
std::string thisTest();
// Reads a stream to its end.
std::string readAll( FILE *file );

// For zu_test_main.cpp, ahead of the library's start

// Makes the reports of the many processes that are to fail a check cheap.
void prepareReports();
// Where there is no fork, the environment variable that tells such a process which statement of its test it is for.
inline constexpr const char *ABORT_NUMBER = "ZU_TEST_ABORT_NUMBER";
