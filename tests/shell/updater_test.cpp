#include "shell/updater.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "shell/accessibility_announcements.hpp"

namespace velotap {
namespace {

class RecordingUpdates final : public UpdateService {
 public:
  void start() override { calls.emplace_back("start"); }
  [[nodiscard]] std::optional<std::string> unavailableReason() const override { return reason; }
  void checkForUpdates() override { calls.emplace_back("check"); }
  [[nodiscard]] bool checksAutomatically() const override { return automatic; }
  void setChecksAutomatically(bool on) override { automatic = on; }
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override {
    return std::chrono::system_clock::from_time_t(7);
  }
  [[nodiscard]] Observation observe(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  std::optional<std::string> reason;
  bool automatic = false;
  ObserverList<> changes;
  std::vector<std::string> calls;
};

TEST(Updater, StartsWhenItIsMade) {
  RecordingUpdates service;
  const Updater updater(service);
  EXPECT_EQ(service.calls, std::vector<std::string>{"start"});
  EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST(Updater, ChecksOnlyWhereThereCanBeUpdates) {
  RecordingUpdates service;
  Updater updater(service);
  updater.checkForUpdates();
  EXPECT_EQ(service.calls, (std::vector<std::string>{"start", "check"}));
  service.reason = "updates.unavailable.feed";
  updater.checkForUpdates();
  EXPECT_EQ(service.calls, (std::vector<std::string>{"start", "check"}));
  EXPECT_EQ(updater.unavailableReason(), "updates.unavailable.feed");
}

TEST(Updater, PassesOnPolicyLastCheckAndChanges) {
  RecordingUpdates service;
  Updater updater(service);
  updater.setAutomaticallyChecks(true);
  EXPECT_TRUE(updater.automaticallyChecks());
  EXPECT_EQ(updater.lastCheck(), std::chrono::system_clock::from_time_t(7));
  int told = 0;
  const Observation observation = updater.observe([&told] { ++told; });
  service.changes.notify();
  EXPECT_EQ(told, 1);
}

class RecordingAnnouncements final : public Announcements {
 public:
  void post(const std::string& message, AnnouncementPriority priority) override {
    posted.push_back(message + " " + std::to_string(static_cast<int>(priority)));
  }
  std::vector<std::string> posted;
};

TEST(AccessibilityAnnouncements, SpeakWhateverIsNotEmpty) {
  RecordingAnnouncements service;
  AccessibilityAnnouncements announcements(service);
  announcements.post("", AnnouncementPriority::high);
  announcements.post("Done", AnnouncementPriority::medium);
  EXPECT_EQ(service.posted, std::vector<std::string>{"Done 50"});
}

}  // namespace
}  // namespace velotap
