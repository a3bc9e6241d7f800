// The C++ runtime's own interface, as far as the program uses it.
#pragma once

#include <stddef.h>

#include <typeinfo>

namespace __cxxabiv1 {
extern "C" {
char* __cxa_demangle(const char* name, char* buffer, size_t* size, int* status);
std::type_info* __cxa_current_exception_type();
}
}  // namespace __cxxabiv1
namespace abi = __cxxabiv1;
