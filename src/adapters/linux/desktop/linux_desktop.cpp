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

LinuxDesktop::LinuxDesktop(const LinuxHost& host, bool debug)
    : log_(debug),
      preferences_(host.loop, configurationFolder(), &tell),
      systemPreferences_(host.loop, host.queue, DesktopPlaces::read(&environmentOf),
                         UinputTouchpad::kName),
      keyboardLayout_(makeLayoutSources(host.loop, host.queue, SessionEnvironment::ofThisProcess(),
                                        DconfPlaces::read(&environmentOf))),
      workspace_(AppId::intern(kOwnBundleId),
                 LinuxWorkspace::desktopOf(
                     SessionEnvironment::ofThisProcess(),
                     {.loop = host.loop, .queue = host.queue, .clock = host.clock, .log = log_}),
                 {.loop = host.loop, .queue = host.queue, .clock = host.clock, .log = log_}),
      notices_(host.loop, host.queue, SessionEnvironment::ofThisProcess(),
               SleepNotices::systemBusAddress(&environmentOf)),
      activity_(host.loop),
      trust_(access_, activity_),
      pointer_(chordKeyCodes()),
      output_(pointer_, host.clock, &tellOutput),
      locator_(host.clock, host.queue),
      gestures_(
          touchpad_,
          {.padUsable = [this] { return systemPreferences_.gesturePadUsable(); },
           .writeCombined =
               [this](std::span<const input_event> frame) { return output_.postFrame(frame); }},
          host.clock, log_),
      events_(
          output_, locator_, [this](const GestureEvent& event) { gestures_.post(event); },
          [this] { gestures_.prepare(); }),
      platform_{.clock = host.clock,
                .mainQueue = host.queue,
                .libraries = libraries_,
                .events = events_,
                .taps = taps_,
                .preferences = preferences_,
                .systemPreferences = systemPreferences_,
                .workspace = workspace_,
                .keyboardLayout = keyboardLayout_,
                .notices = notices_,
                .trust = trust_,
                .alerts = host.alerts,
                .notifications = notifications_,
                .log = log_} {
  const auto takeLayout = [this] { events_.setLayout(keyboardLayout_.current()); };
  layoutChanges_ = keyboardLayout_.observeChanges(takeLayout);
  takeLayout();
  workspace_.start();
}

}  // namespace velotap
