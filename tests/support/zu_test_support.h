// zu_test_support.h: what the tests share, the whole interface and much of the standard library among it.
#pragma once

#include "zu/zu.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

// Runs `statement` in a child process and expects it to end in zu___Abort with this expression, and with this message
// where one is given; null stands for a failed check that has none.
void expectAbort( const char *expression, const std::function< void() > &statement, const char *message = nullptr );

// Tells whether such a process is a forked one, which lacks the library's threads.
bool abortsInAFork();

// Runs `body` in `count` threads that begin together and tell themselves apart by 0 to count - 1; waits for them all.
void runThreads( int count, const std::function<void( int )> &body );

// Runs `body` on a thread with as much stack as the library must make do with.
void runOnSmallStack( const std::function<void()> &body );

// Runs a program and returns its standard output; a failure to run it, or its failing, fails the test.
std::string runProgram( const std::string &commandLine );

// Ends the process, as a failure, if it is still there after so many seconds.
void endAfter( unsigned seconds );

// Tells whether an extended regular expression, as POSIX has them, matches part of a line.
bool matchesForm( const std::string &line, const char *form );

// Runs the current test in a process of its own, in which the library has been started with `flags`; there this runs
// `statement`.  A failed expectation there is one here.
void runRestarted( int64_t flags, const std::function<void()> &statement );

// Returns the seed of a test with random numbers, which a failure must show: the number in the environment variable
// ZU_TEST_SEED, or a new one.
uint64_t testSeed();
// Random numbers of such a seed, which failures show for as long as these live.
class SeededRandom : public std::mt19937_64 {
public:
    explicit SeededRandom( uint64_t seed = testSeed() )
        : std::mt19937_64( seed ), trace( "random numbers", 0, "seed " + std::to_string( seed ) )
    {
    }
    size_t below( size_t end )
    {
        return ( *this )() % end;
    }

private:
    testing::ScopedTrace trace;
};

// Returns what stands between the bars of a text.
std::vector<std::string> divided( const std::string &text );

// The environment variable with the flags of such a process.
inline constexpr const char *RESTARTED_FLAGS = "ZU_TEST_RESTARTED_FLAGS";
// The environment variable with flags to run all other tests under, such as 0x3f8 for all diagnostics.  What the library
// prints goes to the standard error then.
inline constexpr const char *COMMON_FLAGS = "ZU_TEST_FLAGS";
// The flags that the library is to be started with: of such a process, or else of all others.
int64_t startFlags();
