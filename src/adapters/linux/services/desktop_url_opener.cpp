#include "adapters/linux/services/desktop_url_opener.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "adapters/linux/services/settings_pages.hpp"

namespace velotap {
namespace {

constexpr std::size_t kLongest = 65536;
constexpr std::array<std::string_view, 4> kSchemes = {"https:", "http:", "mailto:", "file:"};

void tell(UrlOpener::Outcome& outcome, bool taken) {
  if (const auto told = std::exchange(outcome, nullptr)) told(taken);
}

}  // namespace

bool isOpenable(std::string_view url) noexcept {
  if (url.size() > kLongest) return false;
  const bool printable =
      std::all_of(url.begin(), url.end(), [](char c) { return c > ' ' && c < '\x7F'; });
  return printable && std::any_of(kSchemes.begin(), kSchemes.end(), [url](std::string_view scheme) {
           return url.size() > scheme.size() && url.starts_with(scheme);
         });
}

struct DesktopUrlOpener::Opening {
  ChildCommand child;
  Outcome outcome;
  Observation end{};
  std::shared_ptr<DelayedWork> patience{};
};

DesktopUrlOpener::DesktopUrlOpener(DescriptorLoop& loop, MainQueue& queue,
                                   std::string currentDesktop, std::vector<std::string> opener)
    : loop_(loop),
      queue_(queue),
      currentDesktop_(std::move(currentDesktop)),
      opener_(std::move(opener)) {}

DesktopUrlOpener::~DesktopUrlOpener() {
  for (const auto& opening : openings_) opening->patience->cancel();
}

void DesktopUrlOpener::open(const std::string& url, Outcome outcome) {
  std::vector<std::vector<std::string>> commands;
  if (const SettingsPage page = settingsPageOf(url); page != SettingsPage::none) {
    commands = commandsFor(page, currentDesktop_);
  } else if (isOpenable(url)) {
    commands.push_back(opener_);
    commands.back().push_back(url);
  }
  const bool started = std::any_of(commands.begin(), commands.end(),
                                   [&](const auto& command) { return start(command, outcome); });
  if (!started) tell(outcome, false);
}

bool DesktopUrlOpener::start(const std::vector<std::string>& command, const Outcome& outcome) {
  auto child = ChildCommand::start(command);
  if (!child) return false;
  Opening* const opening =
      openings_.emplace_back(std::make_unique<Opening>(Opening{std::move(*child), outcome})).get();
  opening->end = loop_.watch(opening->child.descriptor(), DescriptorLoop::Interest::readable,
                             [this, opening] { ended(opening); });
  opening->patience =
      queue_.asyncAfter(kPatienceSeconds, [this, opening] { waitedLongEnough(opening); });
  return true;
}

std::vector<std::unique_ptr<DesktopUrlOpener::Opening>>::iterator DesktopUrlOpener::find(
    const Opening* opening) {
  return std::find_if(openings_.begin(), openings_.end(),
                      [opening](const auto& each) { return each.get() == opening; });
}

void DesktopUrlOpener::ended(const Opening* opening) {
  const auto found = find(opening);
  if (found == openings_.end()) return;
  const std::unique_ptr<Opening> finished = std::move(*found);
  openings_.erase(found);
  finished->end.reset();
  finished->patience->cancel();
  tell(finished->outcome, finished->child.finish(0) == 0);
}

// The command is still watched: whoever is not waited for stays behind as a ghost.
void DesktopUrlOpener::waitedLongEnough(const Opening* opening) {
  const auto found = find(opening);
  if (found != openings_.end()) tell((*found)->outcome, true);
}

}  // namespace velotap
