// The desktop's own gesture settings on Linux, followed while they change.
//
// Settings are read on the main thread, at the start and whenever they change, and reduced
// to a few bits; the questions marked "any thread" read those bits and nothing else, because they
// are asked while a gesture is being judged. A desktop that is not known has the input library's
// defaults.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/desktop_settings/desktop_places.hpp"
#include "adapters/linux/desktop_settings/touchpad_settings.hpp"
#include "adapters/linux/desktop_settings/x11_touchpads.hpp"
#include "adapters/linux/files/file_watch.hpp"
#include "base/observer_list.hpp"
#include "platform/preferences_storage.hpp"

namespace velotap {

class LinuxSystemPreferences final : public SystemPreferences {
 public:
  /// `gesturePadName` is the name of the program's own virtual touchpad, which the desktop has
  /// settings for like any other.
  LinuxSystemPreferences(DescriptorLoop& loop, MainQueue& queue, DesktopPlaces places,
                         std::string gesturePadName);

  /// Any thread.
  [[nodiscard]] std::optional<Value> read(std::string_view domain, std::string_view key) override;
  /// Any thread.
  [[nodiscard]] bool desktopClicksFor(TrackpadGesture gesture) const noexcept override;
  /// Any thread: does the desktop listen to the virtual touchpad while a mouse is there?
  [[nodiscard]] bool gesturePadUsable() const noexcept;

  /// Main thread: everything that is known, for whoever asks about one device.
  [[nodiscard]] const DesktopTouchpads& touchpads() const noexcept { return touchpads_; }
  /// Main thread: calls back after any of the answers changed.
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) {
    return observers_.add(std::move(changed));
  }

 private:
  enum Bit : std::uint8_t { answersTap = 1, answersClick = 2, padUsable = 4 };

  void reload();
  [[nodiscard]] DesktopTouchpads load() const;
  [[nodiscard]] ThreeFingerAnswers answers() const noexcept;

  const DesktopPlaces places_;
  const std::string gesturePadName_;
  DesktopTouchpads touchpads_;
  std::atomic<std::uint8_t> bits_ = answersClick | padUsable;
  static_assert(std::atomic<std::uint8_t>::is_always_lock_free);
  ObserverList<> observers_;
  FileWatch watch_;
  std::unique_ptr<X11Touchpads> x11_;  ///< null without an X server
};

}  // namespace velotap
