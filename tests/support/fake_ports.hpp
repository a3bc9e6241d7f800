// The small ports, each as plain as a test can use it.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/alerts.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/keyboard_layout.hpp"
#include "platform/preferences_storage.hpp"
#include "platform/system_notices.hpp"
#include "platform/workspace.hpp"

namespace velotap::test {

/// Any thread.
class RecordingLog final : public DiagnosticLog {
 public:
  std::atomic<bool> on = true;
  [[nodiscard]] bool enabled() const noexcept override { return on; }
  void line(std::string_view text) override {
    const std::lock_guard guard(lock_);
    lines_.emplace_back(text);
  }
  std::vector<std::string> take() {
    const std::lock_guard guard(lock_);
    return std::exchange(lines_, {});
  }

 private:
  std::mutex lock_;
  std::vector<std::string> lines_;
};

/// `live` may be changed and asked on any thread; the rest is for the main one.
class FakeWorkspace final : public Workspace {
 public:
  explicit FakeWorkspace(AppId own = AppId::intern("app.norwend.velotap")) : own_(own) {}

  [[nodiscard]] AppId ownBundleId() const override {
    ++ownAsked;
    return own_;
  }
  [[nodiscard]] AppId frontmostBundleId() override { return live_; }
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return front_; }
  [[nodiscard]] Observation observeActivations(
      std::function<void(const std::optional<RunningApplication>&)> activated) override {
    ++observers;
    return activations_.add(std::move(activated));
  }

  /// Brings an application to the front and says so.
  void activate(const std::string& id, const std::string& name = "") {
    activate(RunningApplication{AppId::intern(id), name});
  }
  void activate(const std::optional<RunningApplication>& application) {
    front_ = application;
    live_ = application ? application->bundleId : AppId();
    activations_.notify(application);
  }
  /// Only the live answer changes; the notification is still on its way.
  void setLive(AppId id) { live_ = id; }
  /// Only the answer for the start.
  void setFront(std::optional<RunningApplication> application) {
    front_ = std::move(application);
    live_ = front_ ? front_->bundleId : AppId();
  }
  int observers = 0;
  mutable std::atomic<int> ownAsked = 0;  ///< how often somebody wanted to know who we are

 private:
  AppId own_;
  std::optional<RunningApplication> front_;
  std::atomic<AppId> live_{AppId()};
  ObserverList<const std::optional<RunningApplication>&> activations_;
};

class FakeKeyboardLayout final : public KeyboardLayout {
 public:
  /// What each key types; none when the layout does not tell its characters.
  std::optional<std::map<std::uint16_t, std::string>> keys;
  int observers = 0;
  std::map<std::uint16_t, int> translations;  ///< how often each key was asked for

  [[nodiscard]] std::unique_ptr<KeyTranslator> current() override {
    if (!keys) return nullptr;
    return std::make_unique<Translator>(*this);
  }
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override {
    ++observers;
    return changes_.add(std::move(changed));
  }
  void select(std::optional<std::map<std::uint16_t, std::string>> layout) {
    keys = std::move(layout);
    changes_.notify();
  }

 private:
  struct Translator final : KeyTranslator {
    explicit Translator(FakeKeyboardLayout& o) : owner(o), keys(*o.keys) {}
    [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override {
      ++owner.translations[keyCode];
      const auto found = keys.find(keyCode);
      return found == keys.end() ? std::nullopt : std::optional(found->second);
    }
    FakeKeyboardLayout& owner;
    std::map<std::uint16_t, std::string> keys;
  };
  ObserverList<> changes_;
};

class FakeNotices final : public SystemNotices {
 public:
  DeviceWatch failures;  ///< what watching devices reports; its observation is not used
  int deviceWatches = 0;
  int sleepWatches = 0;
  int displayWatches = 0;
  ObserverList<> attached;
  ObserverList<> detached;
  ObserverList<> willSleep;
  ObserverList<> didWake;
  ObserverList<> displays;

  [[nodiscard]] DeviceWatch watchDevices(std::function<void()> onAttach,
                                         std::function<void()> onDetach) override {
    ++deviceWatches;
    DeviceWatch watch{.portFailed = failures.portFailed,
                      .attachError = failures.attachError,
                      .detachError = failures.detachError,
                      .observation = {}};
    if (watch.portFailed) return watch;
    if (!watch.attachError) keep(attached.add(std::move(onAttach)));
    if (!watch.detachError) keep(detached.add(std::move(onDetach)));
    watch.observation = withdrawAll();
    return watch;
  }
  [[nodiscard]] Observation watchSleep(std::function<void()> sleeping,
                                       std::function<void()> waking) override {
    ++sleepWatches;
    keep(willSleep.add(std::move(sleeping)));
    keep(didWake.add(std::move(waking)));
    return withdrawAll();
  }
  [[nodiscard]] Observation watchDisplays(std::function<void()> reconfigured) override {
    ++displayWatches;
    return displays.add(std::move(reconfigured));
  }

 private:
  void keep(Observation observation) { kept_.push_back(std::move(observation)); }
  Observation withdrawAll() {
    auto held = std::make_shared<std::vector<Observation>>(std::exchange(kept_, {}));
    return Observation([held] { held->clear(); });
  }
  std::vector<Observation> kept_;
};

class FakeTrust final : public AccessibilityTrust {
 public:
  bool granted = true;
  [[nodiscard]] bool trusted() override { return granted; }
};

class FakeAlerts final : public Alerts {
 public:
  int answer = 0;
  std::vector<AlertRequest> shown;
  std::vector<std::string> opened;
  int runModal(const AlertRequest& request) override {
    shown.push_back(request);
    return answer;
  }
  void openUrl(const std::string& url) override { opened.push_back(url); }
};

/// Any thread.
class FakeSystemPreferences final : public SystemPreferences {
 public:
  void set(const std::string& domain, const std::string& key, Value value) {
    const std::lock_guard guard(lock_);
    values_.insert_or_assign({domain, key}, std::move(value));
  }
  [[nodiscard]] std::optional<Value> read(std::string_view domain, std::string_view key) override {
    const std::lock_guard guard(lock_);
    const auto found = values_.find({std::string(domain), std::string(key)});
    return found == values_.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  std::mutex lock_;
  std::map<std::pair<std::string, std::string>, Value> values_;
};

class MemoryPreferences final : public PreferencesStorage {
 public:
  std::map<std::string, ValueMap, std::less<>> domains;
  bool refuses = false;
  [[nodiscard]] ValueMap load(std::string_view domain) override {
    const auto found = domains.find(domain);
    return found == domains.end() ? ValueMap() : found->second;
  }
  bool store(std::string_view domain, const ValueMap& values) override {
    if (refuses) return false;
    domains.insert_or_assign(std::string(domain), values);
    return true;
  }
  [[nodiscard]] Observation observe(std::string_view, std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }
  ObserverList<> changes;  ///< notify: another writer changed a domain
};

}  // namespace velotap::test
