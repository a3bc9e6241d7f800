// What the application shell needs of an operating system, besides Platform: the services that are
// about the person and the program rather than about touches.
//
// Apart from Platform, because replays and diagnostics have touches and no person.
#pragma once

#include <string>

#include "platform/announcements.hpp"
#include "platform/login_item.hpp"
#include "platform/trust_prompt.hpp"
#include "platform/updates.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

/// References to the ports. Whoever builds one keeps the adapters alive as long as it is in use.
struct ShellPlatform {
  TrustPrompt& trustPrompt;
  LoginItemService& loginItem;
  UpdateService& updates;
  Announcements& announcements;
  UrlOpener& urls;
  std::string crashFolder;  ///< where crash reports are kept; need not exist

  /// The shell platform of this process. Set once, after Platform; ends the process with a message
  /// when it was not.
  [[nodiscard]] static ShellPlatform& current();
  static void setCurrent(ShellPlatform& platform);
};

}  // namespace velotap
