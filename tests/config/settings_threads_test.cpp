// Readers on several threads against a writer on the main one; meant for the thread sanitizer.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "config/config.hpp"
#include "support/fake_ports.hpp"

namespace velotap {
namespace {

TEST(SettingsThreads, readersSeeWholeValuesWhileTheMainThreadWrites) {
  test::MemoryPreferences storage;
  test::RecordingLog log;
  NotificationCenter notifications;
  DefaultsStore defaults(storage, log);
  Config config(defaults, notifications);
  std::atomic<bool> done = false;
  std::atomic<int> torn = 0;

  const auto read = [&] {
    while (!done) {
      const CenterBand band = config.centerBand();
      const bool bandIsWhole = band == CenterBand{0.35F, 0.65F} ||
                               band == CenterBand{0.1F, 0.65F} || band == CenterBand{0.1F, 0.9F} ||
                               band == CenterBand{0.35F, 0.9F};
      const double duration = config.maxTapDuration();
      const bool durationIsWhole = duration == 0.3 || duration == 0.05 || duration == 2.0;
      const auto list = config.ignoredApps();
      const bool listIsWhole = list.empty() || list == std::vector<std::string>{"a", "b"};
      if (!bandIsWhole || !durationIsWhole || !listIsWhole) ++torn;
      static_cast<void>(config.enabled() && config.isOn(Trigger::padTap3));
      static_cast<void>(defaults.boolean("padTap3"));
      static_cast<void>(defaults.text("settings.gestureDevice"));
    }
  };
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i) readers.emplace_back(read);

  for (int round = 0; round < 200; ++round) {
    const bool odd = round % 2 != 0;
    defaults.set("enabled", odd);
    defaults.set("padTap3", !odd);
    defaults.set("maxTapDurationMs", odd ? 1 : 5000);
    defaults.set("settings.gestureDevice", odd ? "mouse" : "trackpad");
    config.setIgnoredApps(odd ? std::vector<std::string>{"a", "b"} : std::vector<std::string>{});
    defaults.set("centerMinX", 0.1);
    defaults.set("centerMaxX", 0.9);
    defaults.remove("centerMinX");
    defaults.remove("centerMaxX");
    if (round % 10 == 0) storage.changes.notify();
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace velotap
