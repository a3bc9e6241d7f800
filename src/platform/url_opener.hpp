// The port for handing an address to whatever program of the person's answers for it: web pages,
// mail to be written, files to be shown.
//
// Main thread. Nothing is ever handed to a shell, and nothing here waits: some desktops need
// seconds to find out that they have no program for an address.
#pragma once

#include <functional>
#include <string>

namespace velotap {

class UrlOpener {
 public:
  /// Called at most once, on the main thread: whether a program took the address. May be empty.
  using Outcome = std::function<void(bool taken)>;

  virtual ~UrlOpener() = default;
  /// Tells the outcome before it returns or later; never, when this object goes first.
  virtual void open(const std::string& url, Outcome outcome) = 0;
};

}  // namespace velotap
