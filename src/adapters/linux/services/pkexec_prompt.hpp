// Asks for the rights to the touch devices through the system's privilege prompt: the helper script
// that installs the udev rule is run once the person has typed the password.
//
// Main thread; never waits. There is no other place where the right is given: showing the settings
// shows the prompt, unless it is on the screen already.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/notices/session_activity.hpp"
#include "adapters/linux/services/access_watch.hpp"
#include "adapters/linux/services/child_command.hpp"
#include "base/observer_list.hpp"
#include "platform/main_queue.hpp"
#include "platform/trust_prompt.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

class PkexecPrompt final : public TrustPrompt {
 public:
  struct Places {
    /// What asks for the password and then runs its last argument: "pkexec".
    std::vector<std::string> prompt{"pkexec"};
    std::string helper;   ///< the script that installs the rule
    std::string program;  ///< this program's own file
  };

  PkexecPrompt(DescriptorLoop& loop, Places places, AccessWatch& access, SessionActivity& activity,
               UrlOpener& urls);

  void request() override;
  bool openSettings() override;
  bool revealProgram() override;
  [[nodiscard]] Observation observe(std::function<void()> mayHaveChanged) override;

 private:
  bool start();
  void ended();

  DescriptorLoop& loop_;
  const Places places_;
  AccessWatch& access_;
  SessionActivity& activity_;
  UrlOpener& urls_;
  std::optional<ChildCommand> prompt_;
  Observation promptEnd_;
  ObserverList<> changes_;
  Observation accessChanges_;
  Observation activityChanges_;
};

/// The helper script: the first of these absolute paths that can be run, empty when none can. What
/// is installed comes before the source tree, which serves a program that was only built.
[[nodiscard]] std::string findAccessHelper(const std::vector<std::string>& places);

}  // namespace velotap
