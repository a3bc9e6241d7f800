// Every macOS adapter, wired to the others, as one platform.
//
// Made and destroyed on the main thread. Creating it makes one keyboard event and opens nothing.
// Names no framework, because some of their types differ between C++ and Objective-C++, and both
// use this. Exists on a Mac only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/macos/cocoa/cocoa_appearance.hpp"
#include "adapters/macos/shell/mac_panels.hpp"
#include "adapters/macos/shell/program_facts.hpp"
#include "platform/applications.hpp"
#include "platform/platform.hpp"
#include "platform/regional_settings.hpp"
#include "platform/shell_platform.hpp"

namespace velotap {

class MacDesktop {
 public:
  /// `debug` turns diagnostic lines on; `settingKeys` are the settings whose change by another
  /// program is to be noticed at once.
  MacDesktop(bool debug, std::vector<std::string> settingKeys);
  ~MacDesktop();
  MacDesktop(const MacDesktop&) = delete;
  MacDesktop& operator=(const MacDesktop&) = delete;

  [[nodiscard]] Platform& platform() noexcept;
  [[nodiscard]] ShellPlatform& shellPlatform() noexcept;
  [[nodiscard]] RegionalSettings& regionalSettings() noexcept;
  [[nodiscard]] Applications& applications() noexcept;
  [[nodiscard]] MacPanels& panels() noexcept;
  [[nodiscard]] CocoaAppearance& appearance() noexcept;
  [[nodiscard]] const ProgramFacts& program() const noexcept;
  /// Where the program keeps what is neither a setting nor the person's; need not exist.
  [[nodiscard]] static std::string supportFolder();
  /// To be called when the program comes to the front: settings that another program wrote and the
  /// system cannot tell of are noticed then.
  void recheckPreferences();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace velotap
