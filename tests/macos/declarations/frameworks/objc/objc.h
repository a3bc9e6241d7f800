// The Objective-C types that C code sees.
#pragma once

#if defined(__OBJC_BOOL_IS_BOOL) && __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define nil nullptr
#define YES __objc_yes
#define NO __objc_no

extern "C" SEL sel_registerName(const char* name);
