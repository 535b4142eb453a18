// A module whose functions print what they are called for; built several times, with definitions that say what it is.
#pragma once

#include "zu/zu.h"

#ifndef TEST_DEFINED_AS
#define TEST_DEFINED_AS TEST_MODULE // the name under which it exports its module
#endif
#ifndef TEST_DEPS
#define TEST_DEPS ""
#endif
#ifndef TEST_EXTS
#define TEST_EXTS ""
#endif
#ifndef TEST_PRODUCT
#define TEST_PRODUCT ZU___MODULE_ANY_PRODUCT
#endif

// The environment variable with the number of the line of zu_test_module_misfits.h that is made true of a module.
#define TEST_MISFIT_VARIABLE "ZU_TEST_MISFIT"

#define TEST_NAME          ZU___STRINGIFY( TEST_MODULE )
#define TEST_PRINT( what ) zuPrintCstr( TEST_NAME " " what "\n", -1 )

#define TEST_PASTED( a, b ) a##b
#define TEST_JOINED( a, b ) TEST_PASTED( a, b )
#define TEST_OBJECT         TEST_JOINED( TEST_DEFINED_AS, ___module )

#ifdef TEST_MODULE
ZU___MODULE_DECLARE( TEST_DEFINED_AS )
#endif
