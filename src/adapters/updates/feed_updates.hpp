// Software updates from a signed feed: looks once a day where the person allows it, and whenever
// they ask, and shows them the page of a newer version. Nothing is downloaded or installed.
//
// Main thread; never waits. Feed and key are named when the program is built; a build that names
// none gets its updates from where it was installed, and says so. The policy and the time of the
// last answer are kept in a settings domain of their own.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/observer_list.hpp"
#include "platform/alerts.hpp"
#include "platform/clock.hpp"
#include "platform/main_queue.hpp"
#include "platform/preferences_storage.hpp"
#include "platform/updates.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

struct UpdateSource {
  std::string feed;     ///< an https address; empty for none
  std::string key;      ///< the maker's public key in base64
  std::string version;  ///< of this program
};

class FeedUpdates final : public UpdateService {
 public:
  static constexpr double kSecondsBetweenChecks = 24.0 * 3600.0;
  static constexpr double kSecondsAfterLaunch = 60.0;
  static constexpr std::string_view kDomain = "app.norwend.velotap.updates";

  struct Effects {
    /// Fetches an address and calls back on the main thread: the content, or nothing.
    std::function<void(const std::string& url, std::function<void(std::optional<std::string>)>)>
        fetch;
    std::function<std::string(std::string_view key)> localize;
  };

  FeedUpdates(UpdateSource source, Effects effects, const Clock& clock, MainQueue& queue,
              PreferencesStorage& storage, Alerts& alerts, UrlOpener& urls);
  ~FeedUpdates() override;
  FeedUpdates(const FeedUpdates&) = delete;
  FeedUpdates& operator=(const FeedUpdates&) = delete;

  void start() override;
  [[nodiscard]] std::optional<std::string> unavailableReason() const override;
  void checkForUpdates() override;
  [[nodiscard]] bool checksAutomatically() const override;
  void setChecksAutomatically(bool on) override;
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> lastCheck() const override;
  [[nodiscard]] Observation observe(std::function<void()> changed) override;

 private:
  void arrangeCheck();
  void check(bool asked);
  void answered(const std::optional<std::string>& feed);
  void offer(const std::string& version, const std::string& page);
  void tell(const char* titleKey, std::string body);
  void store(const char* key, Value value);
  [[nodiscard]] double secondsSinceEpoch() const;

  const UpdateSource source_;
  const Effects effects_;
  const Clock& clock_;
  MainQueue& queue_;
  PreferencesStorage& storage_;
  Alerts& alerts_;
  UrlOpener& urls_;
  bool started_ = false;
  bool checking_ = false;
  bool asked_ = false;  ///< a person waits for the answer
  std::string told_;    ///< the version that was offered by itself in this run
  std::shared_ptr<DelayedWork> timer_;
  ObserverList<> changes_;
  // Answers may come after the end.
  const std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace velotap
