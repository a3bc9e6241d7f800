// The few things that only Objective-C can do, in a test.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "adapters/macos/cocoa/cocoa_appearance.hpp"
#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/preferences/preferences_changes.hpp"
#include "adapters/macos/shell/mac_alerts.hpp"
#include "adapters/macos/shell/native_dialogs.hpp"
#include "adapters/macos/shell/program_facts.hpp"

namespace velotap::test {

class FakeWorkspace final : public CocoaWorkspace {
 public:
  using Told = std::optional<CocoaApplication>;

  std::optional<std::string> own = "app.norwend.velotap";
  std::optional<std::string> path = "/Applications/Velotap.app";
  Told front;
  std::vector<CocoaApplication> applications;
  std::vector<CocoaBundle> bundles;
  std::vector<std::string> opened;
  std::vector<std::string> revealed;
  bool opens = true;
  std::function<void()> asked;  ///< told whenever it is asked who is in front, before the answer

  std::optional<std::string> ownBundleId() override { return own; }
  std::optional<std::string> ownBundlePath() override { return path; }
  std::size_t frontmostBundleId(char* buffer, std::size_t capacity) override {
    if (asked) asked();
    if (!front || !front->bundleId || front->bundleId->size() > capacity) return 0;
    std::copy(front->bundleId->begin(), front->bundleId->end(), buffer);
    return front->bundleId->size();
  }
  Told frontmost() override { return front; }
  std::vector<CocoaApplication> running() override { return applications; }
  std::optional<CocoaBundle> bundleWithId(const std::string& bundleId) override {
    for (const CocoaBundle& bundle : bundles) {
      if (bundle.bundleId == bundleId) return bundle;
    }
    return std::nullopt;
  }
  std::optional<CocoaBundle> bundleAtPath(const std::string& place) override {
    for (const CocoaBundle& bundle : bundles) {
      if (bundle.path == place) return bundle;
    }
    return std::nullopt;
  }
  std::vector<CocoaBundle> bundlesInApplicationFolders() override { return bundles; }
  Observation observe(WorkspaceNotice notice, std::function<void(const Told&)> told) override {
    return observers_[notice].add(std::move(told));
  }
  bool openUrl(const std::string& url) override {
    opened.push_back(url);
    return opens;
  }
  void reveal(const std::string& file) override { revealed.push_back(file); }

  void tell(WorkspaceNotice notice, const Told& application = std::nullopt) {
    observers_[notice].notify(application);
  }

 private:
  std::map<WorkspaceNotice, ObserverList<const Told&>> observers_;
};

/// Tells of a domain when the test says so, as the system does for any writer.
class FakeChanges final : public PreferencesChanges {
 public:
  Observation observe(std::string_view domain, const std::vector<std::string>& keys,
                      std::function<void()> changed) override {
    watched[std::string(domain)] = keys;
    return observers_[std::string(domain)].add(std::move(changed));
  }
  void tell(const std::string& domain) { observers_[domain].notify(); }

  std::map<std::string, std::vector<std::string>> watched;

 private:
  std::map<std::string, ObserverList<>> observers_;
};

class FakeAlertPanel final : public CocoaAlertPanel {
 public:
  long runModal(const AlertRequest& request) override {
    shown.push_back(request);
    return answer;
  }
  [[nodiscard]] long firstButton() const override { return 1000; }

  long answer = 1000;
  std::vector<AlertRequest> shown;
};

/// Answers as the person in the test does, and keeps what was written and copied.
class FakeDialogs final : public NativeDialogs {
 public:
  std::vector<std::string> chooseApplications(const std::string& message) override {
    messages.push_back(message);
    return chosen;
  }
  std::optional<std::string> chooseSaveLocation(const std::string& name) override {
    proposed.push_back(name);
    return saveLocation;
  }
  bool writeFile(const std::string& path, const std::string& bytes) override {
    if (writes) files[path] = bytes;
    return writes;
  }
  bool copyText(const std::string& text) override {
    if (copies) pasteboard = text;
    return copies;
  }
  std::vector<std::byte> icon(const std::string& path, int pixels) override {
    drawn.push_back(path + " " + std::to_string(pixels));
    return image;
  }

  std::vector<std::string> chosen;
  std::optional<std::string> saveLocation;
  bool writes = true;
  bool copies = true;
  std::vector<std::byte> image{std::byte{'P'}, std::byte{'N'}, std::byte{'G'}};
  std::vector<std::string> messages;
  std::vector<std::string> proposed;
  std::map<std::string, std::string> files;
  std::string pasteboard;
  std::vector<std::string> drawn;
};

class FakeProgram final : public CocoaProgram {
 public:
  std::optional<std::string> entry(const std::string& key) override {
    const auto found = entries.find(key);
    return found == entries.end() ? std::nullopt : std::optional(found->second);
  }
  std::string systemVersion() override { return "Version 14.2 (Build 23C64)"; }

  std::map<std::string, std::string> entries{{"CFBundleShortVersionString", "1.2.3"},
                                             {"CFBundleVersion", "45"},
                                             {"NSHumanReadableCopyright", "© somebody"}};
};

class FakeAppearance final : public CocoaAppearance {
 public:
  bool dark() override { return darkNow; }
  bool highContrast() override { return contrastNow; }
  Observation observe(std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }

  bool darkNow = false;
  bool contrastNow = false;
  ObserverList<> changes;
};

}  // namespace velotap::test
