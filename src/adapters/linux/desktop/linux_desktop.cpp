#include "adapters/linux/desktop/linux_desktop.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "adapters/linux/clicks/evdev_mirror.hpp"
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

// How the multitouch library takes what a grab keeps from it; null when it cannot.
FeedEvents feedOf(LibraryLoader& libraries) {
  void* library = libraries.open(libraries.multitouchLibraryPath());
  if (library == nullptr) return nullptr;
  return reinterpret_cast<FeedEvents>(libraries.symbol(library, "VelotapFeedEvents"));
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
      activity_(host.loop, environmentOf("XDG_VTNR")),
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
      taps_(tapLinks(host)),
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
  touchpadChanges_ = systemPreferences_.observeChanges([this] { taps_.reconsider(); });
  const auto takeActivity = [this] { taps_.setSessionActive(activity_.active()); };
  sessionChanges_ = activity_.observe(takeActivity);
  takeActivity();
  workspace_.start();
}

LinuxEventTaps::Links LinuxDesktop::tapLinks(const LinuxHost& host) {
  return {
      .queue = host.queue,
      .clock = host.clock,
      .surfaces = &surfaceNodes,
      .hardware = [this](const std::string& path) -> std::unique_ptr<MirrorHardware> {
        // A grabbed device would be lost to a library that cannot be told what it does.
        const FeedEvents feed = feedOf(libraries_);
        if (feed == nullptr) return nullptr;
        return makeEvdevMirror(path, feed, [this] { return pointer_.descriptor(); });
      },
      .observer =
          [&loop = host.loop](const std::string& path, ClickObserver::Seen seen) {
            return std::make_unique<ClickObserver>(loop, path, std::move(seen));
          },
      .desktopAnswers =
          [this](const EvdevDevice& device) {
            return desktopAnswers(systemPreferences_.touchpads().of(device.vendor, device.product))
                .click;
          },
      .middle =
          [this](bool down) {
            output_.postMiddle(down ? ClickPacer::Change::press : ClickPacer::Change::release);
          },
      .tell = &tell,
      .note =
          [this](const std::string& text) {
            if (log_.enabled()) log_.line(text);
          }};
}

}  // namespace velotap
