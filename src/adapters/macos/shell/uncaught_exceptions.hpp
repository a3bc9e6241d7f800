// Objective-C exceptions that nobody caught, which are not C++ exceptions and end the process on a
// way of their own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velotap {

struct UncaughtException {
  std::string name;
  std::string reason;              ///< empty when there is none
  std::vector<std::string> stack;  ///< the symbols of the call stack, innermost first
};

/// Calls `handler` once, on the thread of the exception, before the process ends, and then whoever
/// was installed before. Exists on a Mac only.
void installUncaughtExceptionHandler(std::function<void(const UncaughtException&)> handler);

}  // namespace velotap
