// Hands addresses to the desktop: web pages, letters to write, files to show, pages of its
// settings.
//
// Main thread. The desktop's opener is given a short while to say that it found no program; one
// that takes longer has found one. What is no address that the program could mean is refused here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/services/child_command.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

/// Whether the text is an address of a kind that is handed on: "https", "http", "mailto" or "file",
/// in printable characters without spaces, of at most 64 KiB. So it is never an option.
[[nodiscard]] bool isOpenable(std::string_view url) noexcept;

class DesktopUrlOpener final : public UrlOpener {
 public:
  static constexpr int kPatienceMilliseconds = 1500;

  /// `opener` gets the address as its last argument; `currentDesktop` is XDG_CURRENT_DESKTOP.
  explicit DesktopUrlOpener(std::string currentDesktop,
                            std::vector<std::string> opener = {"xdg-open"},
                            int patienceMilliseconds = kPatienceMilliseconds);

  bool open(const std::string& url) override;

 private:
  [[nodiscard]] bool run(const std::vector<std::string>& command, int patience);
  [[nodiscard]] bool openPage(const std::string& url);

  std::string currentDesktop_;
  std::vector<std::string> opener_;
  int patience_;
  std::vector<ChildCommand> running_;  // until they are found to have ended
};

}  // namespace velotap
