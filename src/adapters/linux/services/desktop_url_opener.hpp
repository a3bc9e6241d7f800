// Hands addresses to the desktop: web pages, letters to write, files to show, pages of its
// settings.
//
// Main thread; never waits. The desktop's opener is given a while to say that it found no program;
// one that takes longer has found one. What is no address that the program could mean is refused
// here. Openers that still run when this object goes are left to their work.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/services/child_command.hpp"
#include "platform/main_queue.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

/// Whether the text is an address of a kind that is handed on: "https", "http", "mailto" or "file",
/// in printable characters without spaces, of at most 64 KiB. So it is never an option.
[[nodiscard]] bool isOpenable(std::string_view url) noexcept;

class DesktopUrlOpener final : public UrlOpener {
 public:
  static constexpr double kPatienceSeconds = 10;

  /// `opener` gets the address as its last argument; `currentDesktop` is XDG_CURRENT_DESKTOP.
  DesktopUrlOpener(DescriptorLoop& loop, MainQueue& queue, std::string currentDesktop,
                   std::vector<std::string> opener = {"xdg-open"});
  ~DesktopUrlOpener() override;
  DesktopUrlOpener(const DesktopUrlOpener&) = delete;
  DesktopUrlOpener& operator=(const DesktopUrlOpener&) = delete;

  void open(const std::string& url, Outcome outcome) override;

 private:
  struct Opening;

  /// False when the command cannot be started; then the outcome is still to be told.
  [[nodiscard]] bool start(const std::vector<std::string>& command, const Outcome& outcome);
  void ended(const Opening* opening);
  void waitedLongEnough(const Opening* opening);
  [[nodiscard]] std::vector<std::unique_ptr<Opening>>::iterator find(const Opening* opening);

  DescriptorLoop& loop_;
  MainQueue& queue_;
  std::string currentDesktop_;
  std::vector<std::string> opener_;
  std::vector<std::unique_ptr<Opening>> openings_;  // until their commands end
};

}  // namespace velotap
