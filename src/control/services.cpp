#include "control/services.hpp"

namespace velotap {

Services::Services(Platform& platform)
    : defaults(platform.preferences, platform.log),
      config(defaults, platform.notifications),
      multitouch(platform.libraries),
      apps(config, platform.workspace, platform.events, practice, platform.notifications),
      keyCodes(platform.keyboardLayout, platform.log),
      pinch(config, apps, keyCodes, platform.events, platform.log),
      activity(platform.mainQueue, platform.notifications),
      engine({.multitouch = multitouch,
              .config = config,
              .apps = apps,
              .pinch = pinch,
              .activity = activity,
              .keyCodes = keyCodes,
              .systemPreferences = platform.systemPreferences,
              .events = platform.events,
              .clock = platform.clock,
              .log = platform.log}),
      tap(platform.taps, engine, platform.events, platform.clock, platform.mainQueue, platform.log),
      tapNeeds(config, platform.taps),
      controller(Controller::productionClosures(config, platform.trust, engine, tap, platform.log),
                 platform.log),
      watcher(platform.clock, platform.mainQueue, platform.notices, platform.log) {
  tap.setLostHandler([this] { controller.stop(); });
}

void Services::launch() {
  keyCodes.start();
  apps.start();
  watcher.start([this] { controller.stop(); }, [this] { controller.restart(); });
  controller.start();
}

}  // namespace velotap
