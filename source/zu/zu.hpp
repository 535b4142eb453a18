// zu.hpp: the whole interface for C++17 and later.
//
//     zu::Runtime runtime( "hello", "Greetings", "1.0" );
//     zu::Ref<ZU_STRING> line = zu::format( "%s: %i of %i", name, done, total );
//     for ( auto [ word, count ] : zu::pairs<ZU_STRING, ZU_BOXED_INT>( counts ) ) { ... }
//
//     zu_ref.hpp      references that release themselves, and compare and print as the objects do
//     zu_text.hpp     strings from and to std::string and its kin
//     zu_format.hpp   formats that are checked when the program is compiled
//     zu_ranges.hpp   range-for over vectors, dicts, stores and lines
//     zu_calls.hpp    lambdas for threads, listeners, timers and streams; guards
//
// Everything is inline, needs neither exceptions nor RTTI, and compiles to the calls of the C interface.
#pragma once

#include "zu/hpp/zu_calls.hpp"
#include "zu/hpp/zu_format.hpp"
#include "zu/hpp/zu_ranges.hpp"
#include "zu/hpp/zu_ref.hpp"
#include "zu/hpp/zu_text.hpp"
#include "zu/zu.h"
