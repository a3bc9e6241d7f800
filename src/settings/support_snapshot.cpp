#include "settings/support_snapshot.hpp"

#include <algorithm>

namespace velotap {
namespace {

// Versions come from outside; each fact stays on its line.
std::string onOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }, ' ');
  return text;
}

std::string devices(const std::vector<DeviceClass>& connected, const Texts& texts) {
  std::string names;
  for (const auto& [deviceClass, key] : {std::pair(DeviceClass::trackpad, "Trackpad"),
                                         std::pair(DeviceClass::magicMouse, "Magic Mouse")}) {
    if (std::find(connected.begin(), connected.end(), deviceClass) == connected.end()) continue;
    names += (names.empty() ? "" : ", ") + texts(key);
  }
  return names.empty() ? texts("design.no") : names;
}

class Lines {
 public:
  explicit Lines(const Texts& texts) : texts_(texts) {}

  void plain(const std::string& line) { text_ += onOneLine(line) + "\n"; }
  void labelled(std::string_view labelKey, const std::string& value) {
    plain(texts_(labelKey) + ": " + value);
  }
  void yesNo(std::string_view labelKey, bool yes) {
    labelled(labelKey, texts_(yes ? "design.yes" : "design.no"));
  }
  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  const Texts& texts_;
  std::string text_;
};

}  // namespace

std::string_view SupportSnapshot::key(CopyFeedback feedback) noexcept {
  return feedback == CopyFeedback::copied ? "design.copied" : "support.snapshot.copyFailed";
}

std::string SupportSnapshot::text(const SupportFacts& facts, const Texts& texts) {
  const RegionalFormat& format = texts.format();
  const auto count = [&format](std::size_t number) {
    return format.wholeNumber(static_cast<std::int64_t>(number));
  };
  Lines lines(texts);
  lines.plain("Velotap · " + versionLine(facts.build, texts));
  lines.plain(facts.system + " · " + facts.systemVersion);
  lines.yesNo("Enable Velotap", facts.enabled);
  lines.yesNo("Accessibility Setup…", facts.accessibilityGranted);
  lines.labelled("Max tap duration", format.milliseconds(facts.tuning.maxTapDurationMs));
  lines.labelled("Finger drift tolerance", format.number(facts.tuning.maxTapDrift, 2));
  lines.labelled("Sensitivity", format.number(facts.tuning.pinchSensitivity, 1));
  lines.labelled("Left edge", format.number(facts.tuning.centerMinX, 2));
  lines.labelled("Right edge", format.number(facts.tuning.centerMaxX, 2));
  lines.labelled("design.devices", devices(facts.connectedDevices, texts));
  lines.labelled("Velotap off in these apps", count(facts.ignoredApps));
  lines.labelled("Send zoom keyboard shortcuts", count(facts.keystrokeZoomApps));
  return lines.take();
}

SupportSnapshotView supportSnapshotView(const SupportFacts& facts, const Texts& texts) {
  return {.title = texts("design.support.snapshot.title"),
          .caption = texts("design.support.privacy"),
          .text = SupportSnapshot::text(facts, texts),
          .copyTitle = texts("design.copy.snapshot"),
          .saveTitle = texts("refine.support.save"),
          .done = texts("Done")};
}

}  // namespace velotap
