// The X server's keyboard extension, whose generated header names a member after a keyword of C++.
// A system header for the compiler, since it would warn of the only way round that.
#pragma once
#pragma GCC system_header

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
