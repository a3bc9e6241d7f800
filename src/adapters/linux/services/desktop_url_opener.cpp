#include "adapters/linux/services/desktop_url_opener.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "adapters/linux/services/settings_pages.hpp"

namespace velotap {
namespace {

constexpr std::size_t kLongest = 65536;
constexpr std::array<std::string_view, 4> kSchemes = {"https:", "http:", "mailto:", "file:"};

}  // namespace

bool isOpenable(std::string_view url) noexcept {
  if (url.size() > kLongest) return false;
  const bool printable =
      std::all_of(url.begin(), url.end(), [](char c) { return c > ' ' && c < '\x7F'; });
  return printable && std::any_of(kSchemes.begin(), kSchemes.end(), [url](std::string_view scheme) {
           return url.size() > scheme.size() && url.starts_with(scheme);
         });
}

DesktopUrlOpener::DesktopUrlOpener(std::string currentDesktop, std::vector<std::string> opener,
                                   int patienceMilliseconds)
    : currentDesktop_(std::move(currentDesktop)),
      opener_(std::move(opener)),
      patience_(patienceMilliseconds) {}

bool DesktopUrlOpener::open(const std::string& url) {
  if (settingsPageOf(url) != SettingsPage::none) return openPage(url);
  if (!isOpenable(url)) return false;
  std::vector<std::string> command = opener_;
  command.push_back(url);
  return run(command, patience_);
}

bool DesktopUrlOpener::openPage(const std::string& url) {
  const auto commands = commandsFor(settingsPageOf(url), currentDesktop_);
  return std::any_of(commands.begin(), commands.end(),
                     [this](const auto& command) { return run(command, 0); });
}

bool DesktopUrlOpener::run(const std::vector<std::string>& command, int patience) {
  std::erase_if(running_, [](ChildCommand& child) { return child.finish(0).has_value(); });
  auto child = ChildCommand::start(command);
  if (!child) return false;
  const auto status = child->finish(patience);
  if (!status) running_.push_back(std::move(*child));
  return !status || *status == 0;
}

}  // namespace velotap
