#include "adapters/linux/services/pkexec_prompt.hpp"

#include <utility>

namespace velotap {

PkexecPrompt::PkexecPrompt(DescriptorLoop& loop, Places places, AccessWatch& access,
                           SessionActivity& activity, UrlOpener& urls)
    : loop_(loop),
      places_(std::move(places)),
      access_(access),
      activity_(activity),
      urls_(urls),
      accessChanges_(access_.observe([this] { changes_.notify(); })),
      activityChanges_(activity_.observe([this] { changes_.notify(); })) {}

void PkexecPrompt::request() {
  start();
}

bool PkexecPrompt::openSettings() {
  return start();
}

bool PkexecPrompt::revealProgram() {
  const auto slash = places_.program.rfind('/');
  if (slash == std::string::npos) return false;
  urls_.open("file://" + places_.program.substr(0, slash + 1), {});
  return true;
}

Observation PkexecPrompt::observe(std::function<void()> mayHaveChanged) {
  if (!access_.works()) return {};
  return changes_.add(std::move(mayHaveChanged));
}

bool PkexecPrompt::start() {
  if (prompt_) return true;
  if (places_.helper.empty()) return false;
  std::vector<std::string> command = places_.prompt;
  command.push_back(places_.helper);
  prompt_ = ChildCommand::start(command);
  if (!prompt_) return false;
  promptEnd_ =
      loop_.watch(prompt_->descriptor(), DescriptorLoop::Interest::readable, [this] { ended(); });
  return true;
}

void PkexecPrompt::ended() {
  promptEnd_.reset();
  static_cast<void>(prompt_->finish(0));
  prompt_.reset();
  changes_.notify();
}

std::string findAccessHelper(const std::vector<std::string>& places) {
  for (const std::string& path : places) {
    if (path.starts_with('/') && findProgram(path)) return path;
  }
  return {};
}

}  // namespace velotap
