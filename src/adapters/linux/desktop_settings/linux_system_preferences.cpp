#include "adapters/linux/desktop_settings/linux_system_preferences.hpp"

#include <utility>
#include <vector>

#include "adapters/linux/dconf/dconf_snapshot.hpp"
#include "adapters/linux/desktop_settings/kde_config.hpp"
#include "adapters/linux/desktop_settings/touchpad_readers.hpp"
#include "adapters/linux/files/read_file.hpp"

namespace velotap {
namespace {

std::vector<std::string> watchedFiles(const DesktopPlaces& places) {
  switch (places.kind) {
    case DesktopKind::gnome:
      return places.dconf.databases;
    case DesktopKind::kde:
      return places.kdeInputFiles;
    case DesktopKind::xServer:
    case DesktopKind::other:
      return {};
  }
  return {};
}

constexpr std::size_t kLargestConfiguration = std::size_t{4} * 1024 * 1024;

KdeConfig kdeConfigOf(const std::vector<std::string>& files) {
  KdeConfig config;
  for (const auto& path : files) {
    config.add(readFile(path, kLargestConfiguration).text);
  }
  return config;
}

}  // namespace

LinuxSystemPreferences::LinuxSystemPreferences(DescriptorLoop& loop, MainQueue& queue,
                                               DesktopPlaces places, std::string gesturePadName)
    : places_(std::move(places)),
      gesturePadName_(std::move(gesturePadName)),
      watch_(loop, watchedFiles(places_), [this] { reload(); }) {
  if (places_.kind == DesktopKind::xServer) {
    x11_ = std::make_unique<X11Touchpads>(loop, queue, places_.display, [this] { reload(); });
  }
  // After watching began, so that no change falls in between.
  reload();
}

std::optional<Value> LinuxSystemPreferences::read(std::string_view domain, std::string_view key) {
  return systemGesturePreference(domain, key, answers());
}

bool LinuxSystemPreferences::desktopClicksFor(TrackpadGesture gesture) const noexcept {
  switch (gesture) {
    case TrackpadGesture::threeFingerTap:
      return answers().tap;
    case TrackpadGesture::threeFingerClick:
      return answers().click;
  }
  return false;
}

bool LinuxSystemPreferences::gesturePadUsable() const noexcept {
  return (bits_.load() & padUsable) != 0;
}

ThreeFingerAnswers LinuxSystemPreferences::answers() const noexcept {
  const std::uint8_t bits = bits_.load();
  return {.tap = (bits & answersTap) != 0, .click = (bits & answersClick) != 0};
}

void LinuxSystemPreferences::reload() {
  DesktopTouchpads touchpads = load();
  if (touchpads == touchpads_) return;
  touchpads_ = std::move(touchpads);
  const ThreeFingerAnswers answers = desktopAnswersOnTrackpads(touchpads_);
  const TouchpadSettings& pad = touchpads_.named(gesturePadName_);
  const bool usable = pad.enabled && !pad.disabledWithMouse;
  bits_.store(static_cast<std::uint8_t>((answers.tap ? answersTap : 0) |
                                        (answers.click ? answersClick : 0) |
                                        (usable ? padUsable : 0)));
  observers_.notify();
}

DesktopTouchpads LinuxSystemPreferences::load() const {
  switch (places_.kind) {
    case DesktopKind::gnome:
      return gnomeTouchpads(DconfSnapshot::load(places_.dconf), places_.touchpadSchema);
    case DesktopKind::kde:
      return kdeTouchpads(kdeConfigOf(places_.kdeInputFiles), places_.kdeTapsByDefault);
    case DesktopKind::xServer:
      return x11_->touchpads();
    case DesktopKind::other:
      return {};
  }
  return {};
}

}  // namespace velotap
