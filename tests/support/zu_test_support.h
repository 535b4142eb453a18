// zu_test_support.h: what the tests share.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>

// Runs `statement` in a child process and expects it to end in zu___Abort with this expression, and with this message
// where one is given; null stands for a failed check that has none.
void expectAbort( const char *expression, const std::function< void() > &statement, const char *message = nullptr );

// Runs `body` in `count` threads at a time, which tell themselves apart by 0 to count - 1, and waits for them all.
void runThreads( int count, const std::function< void( int ) > &body );

// Runs a program and returns its standard output; a failure to run it, or its failing, fails the test.
std::string runProgram( const std::string &commandLine );
