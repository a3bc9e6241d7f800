// A short text about the program's state, for a person to send when asking for support.
//
// Pure; any thread. It holds numbers and yes or no. What a person has or is called, applications,
// names and places have no way into it: it is made from the facts below and nothing else.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "input/device_class.hpp"
#include "localization/texts.hpp"
#include "settings/about_pane.hpp"
#include "settings/tuning_values.hpp"

namespace velotap {

struct SupportFacts {
  BuildFacts build;
  std::string system = "macOS";
  std::string systemVersion;  ///< of the system, not of this machine
  bool enabled = true;
  bool accessibilityGranted = false;
  TuningSnapshot tuning;
  std::vector<DeviceClass> connectedDevices;
  std::size_t ignoredApps = 0;
  std::size_t keystrokeZoomApps = 0;
};

struct SupportSnapshot {
  enum class CopyFeedback { copied, failed };
  [[nodiscard]] static std::string_view key(CopyFeedback feedback) noexcept;

  /// One item a line; labels speak the language, values are what they are.
  [[nodiscard]] static std::string text(const SupportFacts& facts, const Texts& texts);

  static constexpr std::string_view kFileName = "Velotap-support.txt";
  /// Of what to say when the file could not be written.
  static constexpr std::string_view kSaveErrorKey = "refine.support.save.error";
};

struct SupportSnapshotView {
  std::string title;
  std::string caption;
  std::string text;
  std::string copyTitle;
  std::string saveTitle;
  std::string done;
};
[[nodiscard]] SupportSnapshotView supportSnapshotView(const SupportFacts& facts,
                                                      const Texts& texts);

}  // namespace velotap
