// zu_print_test.h: the debugger's channel of each platform, as the tests of printing see it.
#pragma once

#include <string>
#include <vector>

// What it has received, one element a call.
extern std::vector<std::string> logged;
