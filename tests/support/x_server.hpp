// An X server without a screen, for as long as a test lives.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/child_process.hpp"

namespace velotap::test {

class XServer {
 public:
  XServer() : server_(std::in_place, command(), 3), display_(":" + server_->line()) {}

  [[nodiscard]] const std::string& display() const noexcept { return display_; }
  /// Stops it from serving without ending it (SIGSTOP), and continues.
  void signal(int number) const { server_->signal(number); }
  /// Takes the server away from its clients.
  void stop() { server_.reset(); }
  /// Another server under the same name, in place of the one that may still run.
  void restart() {
    server_.reset();
    server_.emplace(command(display_), 3);
    ASSERT_EQ(":" + server_->line(), display_);
  }

 private:
  // Writes its number to descriptor 3 once it serves.
  static std::vector<std::string> command(const std::string& display = {}) {
    std::vector<std::string> words = {"Xvfb"};
    if (!display.empty()) words.push_back(display);
    for (const char* word :
         {"-displayfd", "3", "-screen", "0", "64x64x24", "-nolisten", "tcp", "-noreset"}) {
      words.emplace_back(word);
    }
    return words;
  }

  std::optional<ChildProcess> server_;
  std::string display_;
};

}  // namespace velotap::test
