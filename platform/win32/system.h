#pragma once
// The system's header without those of its macros that rename our own declarations. Include it in place of
// <windows.h>, and before any other system header.
#include <windows.h>

#undef MessageBox
#undef LoadString
#undef GetObject
#undef DrawText
#undef FindText
#undef Yield
