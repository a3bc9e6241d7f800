#include "adapters/linux/desktop/linux_desktop.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "adapters/linux/keyboard/layout_sources.hpp"
#include "adapters/linux/keyboard/shortcut_chord.hpp"

namespace velotap {
namespace {

constexpr std::string_view kOwnBundleId = "app.norwend.velotap";

void tell(const std::string& message) {
  std::fprintf(stderr, "velotap: %s\n", message.c_str());
}

const char* environmentOf(const char* name) {
  return std::getenv(name);
}

void tellOutput(const char* message, int error) {
  tell(error == 0 ? std::string(message) : std::string(message) + ": " + std::strerror(error));
}

}  // namespace

LinuxDesktop::LinuxDesktop(bool debug)
    : log_(debug),
      queue_(clock_),
      preferences_(queue_, configurationFolder(), &tell),
      systemPreferences_(queue_, DesktopPlaces::read(&environmentOf), UinputTouchpad::kName),
      keyboardLayout_(makeLayoutSources(queue_, queue_, SessionEnvironment::ofThisProcess(),
                                        DconfPlaces::read(&environmentOf))),
      workspace_(AppId::intern(kOwnBundleId),
                 LinuxWorkspace::desktopOf(
                     SessionEnvironment::ofThisProcess(),
                     {.loop = queue_, .queue = queue_, .clock = clock_, .log = log_}),
                 {.loop = queue_, .queue = queue_, .clock = clock_, .log = log_}),
      notices_(queue_, queue_, SessionEnvironment::ofThisProcess(),
               SleepNotices::systemBusAddress(&environmentOf)),
      activity_(queue_),
      trust_(access_, activity_),
      pointer_(chordKeyCodes()),
      output_(pointer_, clock_, &tellOutput),
      locator_(clock_, queue_),
      gestures_(
          touchpad_,
          {.padUsable = [this] { return systemPreferences_.gesturePadUsable(); },
           .writeCombined =
               [this](std::span<const input_event> frame) { return output_.postFrame(frame); }},
          clock_, log_),
      events_(output_, locator_, [this](const GestureEvent& event) { gestures_.post(event); }),
      platform_{.clock = clock_,
                .mainQueue = queue_,
                .libraries = libraries_,
                .events = events_,
                .taps = taps_,
                .preferences = preferences_,
                .systemPreferences = systemPreferences_,
                .workspace = workspace_,
                .keyboardLayout = keyboardLayout_,
                .notices = notices_,
                .trust = trust_,
                .alerts = alerts_,
                .notifications = notifications_,
                .log = log_} {
  const auto takeLayout = [this] { events_.setLayout(keyboardLayout_.current()); };
  layoutChanges_ = keyboardLayout_.observeChanges(takeLayout);
  takeLayout();
  workspace_.start();
}

}  // namespace velotap
