// The port for handing an address to whatever program of the person's answers for it: web pages,
// mail to be written, files to be shown.
//
// Main thread. Nothing is ever handed to a shell.
#pragma once

#include <string>

namespace velotap {

class UrlOpener {
 public:
  virtual ~UrlOpener() = default;
  /// False when no program took the address.
  virtual bool open(const std::string& url) = 0;
};

}  // namespace velotap
