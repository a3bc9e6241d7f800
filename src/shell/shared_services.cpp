// The one instance of each service of the shell, over the platforms of this process.
#include <random>

#include "config/config.hpp"
#include "platform/platform.hpp"
#include "platform/shell_platform.hpp"
#include "shell/accessibility_announcements.hpp"
#include "shell/login_item.hpp"
#include "shell/permissions.hpp"
#include "shell/updater.hpp"

namespace velotap {

AccessibilityAnnouncements& AccessibilityAnnouncements::shared() {
  static AccessibilityAnnouncements instance(ShellPlatform::current().announcements);
  return instance;
}

LoginItem& LoginItem::shared() {
  static LoginItem instance(ShellPlatform::current().loginItem);
  return instance;
}

Updater& Updater::shared() {
  static Updater instance(ShellPlatform::current().updates);
  return instance;
}

Permissions& Permissions::shared() {
  Platform& platform = Platform::current();
  TrustPrompt& prompt = ShellPlatform::current().trustPrompt;
  static Permissions instance(DefaultsStore::shared(), platform.mainQueue,
                              {.readTrust = [&platform] { return platform.trust.trusted(); },
                               .requestTrust = [&prompt] { prompt.request(); },
                               .observeTrust =
                                   [&prompt](std::function<void()> mayHaveChanged) {
                                     return prompt.observe(std::move(mayHaveChanged));
                                   }});
  return instance;
}

}  // namespace velotap
