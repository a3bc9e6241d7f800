#include <array>
#include <cstdio>

#include "adapters/macos/core_foundation/cf_values.hpp"
#include "adapters/macos/devices/mac_notices.hpp"
#include "adapters/macos/keyboard/text_input_layout.hpp"
#include "adapters/macos/preferences/cf_preferences_storage.hpp"
#include "adapters/macos/quartz/quartz_event_stream.hpp"
#include "adapters/macos/quartz/quartz_event_taps.hpp"
#include "adapters/macos/shell/mac_login_item.hpp"
#include "adapters/macos/trust/mac_trust.hpp"
#include "adapters/macos/workspace/mac_applications.hpp"
#include "adapters/macos/workspace/mac_workspace.hpp"
#include "applications_contract.hpp"
#include "event_stream_contract.hpp"
#include "event_taps_contract.hpp"
#include "failing_notices_contract.hpp"
#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_io_kit.hpp"
#include "fakes/fake_quartz.hpp"
#include "fakes/fake_runtime.hpp"
#include "fakes/fake_text_input.hpp"
#include "keyboard_layout_contract.hpp"
#include "login_item_contract.hpp"
#include "main_queue_contract.hpp"
#include "preferences/preferences_contract.hpp"
#include "trust_contract.hpp"
#include "workspace_contract.hpp"

namespace velotap::test {
namespace {

class MacQueueWorld final : public MainQueueWorld {
 public:
  MainQueue& queue() override { return queue_; }
  void runReady() override { dispatch_.runReady(); }
  void advance(double seconds) override { dispatch_.advance(seconds); }

 private:
  FakeDispatch dispatch_;
  DispatchMainQueue queue_{dispatch_.api()};
};

class MacTapsWorld final : public SternTapsWorld {
 public:
  EventTaps& taps() override { return taps_; }
  void refuse(TapLocation location) override {
    (location == TapLocation::hid ? quartz_.refuseHid : quartz_.refuseSession) = true;
  }
  std::optional<WorldEvent> click(WorldEvent press) override {
    ++number_;
    const auto passed = send(press);
    send(releaseOf(press));
    return passed;
  }
  void timeOut() override {
    quartz_.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, true);
  }
  void disableForGood(TapDisabled reason) override {
    quartz_.disable(kCGSessionEventTap,
                    reason == TapDisabled::byTimeout ? kCGEventTapDisabledByTimeout
                                                     : kCGEventTapDisabledByUserInput,
                    false);
  }

 private:
  std::optional<WorldEvent> send(WorldEvent event) {
    const auto passed =
        quartz_.send(kCGSessionEventTap, {.type = static_cast<CGEventType>(event.type),
                                          .button = static_cast<CGMouseButton>(event.button),
                                          .integers = {{kCGMouseEventNumber, number_}}});
    if (!passed) return std::nullopt;
    return WorldEvent{static_cast<MouseEventType>(passed->type), static_cast<int>(passed->button)};
  }

  std::int64_t number_ = 0;
  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  QuartzEventTaps taps_{cf_.api(), quartz_.api()};
};

// A posted event in words; fields that only gestures have tell which one it is.
std::string line(const FakeEvent& event) {
  if (event.key) {
    std::array<char, 32> flags{};
    std::snprintf(flags.data(), flags.size(), "0x%llx",
                  static_cast<unsigned long long>(event.flags.value_or(0)));
    return "key " + std::to_string(*event.key) + (event.down ? " down " : " up ") + flags.data();
  }
  const auto kind = event.integers.find(110);
  if (kind == event.integers.end()) {
    return "mouse " + std::to_string(event.type) + " " + std::to_string(event.button);
  }
  const bool zoom = kind->second == 8;
  return (zoom ? "magnify " : "rotate ") + std::to_string(event.integers.at(132)) + " " +
         number(event.reals.at(zoom ? 113 : 114)) + place(event.location.x, event.location.y);
}

class MacStreamWorld final : public EventObjectsWorld {
 public:
  EventStream& events() override { return events_; }
  void setPointer(std::optional<Point> location) override {
    quartz_.succeedOnly.erase("CGEventCreate");
    if (!location) quartz_.succeedOnly["CGEventCreate"] = 0;
    if (location) quartz_.pointer = {location->x, location->y};
  }
  void failMouse() override { quartz_.succeedOnly["CGEventCreateMouseEvent"] = 0; }
  void failKeys() override { quartz_.succeedOnly["CGEventCreateKeyboardEvent"] = 0; }
  std::vector<std::string> posted() override {
    std::vector<std::string> lines;
    for (const FakePost& post : quartz_.posts) lines.push_back(line(post.event));
    return lines;
  }
  std::vector<std::string> places() override {
    std::vector<std::string> lines;
    for (const FakePost& post : quartz_.posts) {
      lines.push_back(place(post.event.location.x, post.event.location.y));
    }
    return lines;
  }

 private:
  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  QuartzEventStream events_{cf_.api(), quartz_.api(), quartz_.runtime()};
};

class MacLayoutWorld final : public KeyboardLayoutWorld {
 public:
  MacLayoutWorld() {
    input_.asciiTable.reset();
    input_.translate = [this](const std::string& table, UInt16 key) {
      const Keys& keys = layouts_.at(table);
      const auto found = keys.find(key);
      // The test's characters are of the first kind of two bytes at most.
      return FakeTextInput::Translation{
          0, found == keys.end() ? std::u16string() : units(found->second), std::nullopt};
    };
  }
  KeyboardLayout& layout() override { return layout_; }
  void select(std::optional<Keys> keys) override {
    input_.currentTable.reset();
    if (keys) {
      input_.currentTable = "layout " + std::to_string(layouts_.size());
      layouts_[*input_.currentTable] = std::move(*keys);
    }
    cf_.notify(FakeTextInput::kChanged);
  }

 private:
  static std::u16string units(const std::string& text) {
    if (text.size() == 1) return {static_cast<char16_t>(text[0])};
    const auto first = static_cast<unsigned char>(text[0]);
    const auto second = static_cast<unsigned char>(text[1]);
    return {static_cast<char16_t>((first & 0x1F) << 6 | (second & 0x3F))};
  }

  std::map<std::string, Keys> layouts_;
  FakeCoreFoundation cf_;
  FakeTextInput input_{cf_};
  TextInputLayout layout_{cf_.api(), input_.api()};
};

class MacWorkspaceWorld final : public WorkspaceWorld {
 public:
  Workspace& workspace() override { return workspace_; }
  void activate(std::optional<RunningApplication> application) override {
    cocoa_.front.reset();
    if (application) {
      cocoa_.front = CocoaApplication{};
      if (application->bundleId) cocoa_.front->bundleId = application->bundleId.text();
      if (!application->name.empty()) cocoa_.front->name = application->name;
    }
    cocoa_.tell(WorkspaceNotice::didActivate, cocoa_.front);
  }

 private:
  FakeCoreFoundation cf_;
  FakeQuartz quartz_{cf_};
  FakeWorkspace cocoa_;
  MacWorkspace workspace_{cocoa_, quartz_.runtime()};
};

class MacNoticesWorld final : public FailingNoticesWorld {
 public:
  SystemNotices& notices() override { return notices_; }
  void attach() override { ioKit_.happen(kIOFirstMatchNotification, 1); }
  void detach() override { ioKit_.happen(kIOTerminatedNotification, 1); }
  void fallAsleep() override { cocoa_.tell(WorkspaceNotice::willSleep); }
  void wakeUp() override { cocoa_.tell(WorkspaceNotice::didWake); }
  void reconfigureDisplays() override { quartz_.reconfigure(1); }
  void failPort() override { ioKit_.portFails = true; }
  void failAttach(int error) override { ioKit_.addFails[kIOFirstMatchNotification] = error; }
  void failDetach(int error) override { ioKit_.addFails[kIOTerminatedNotification] = error; }

 private:
  FakeCoreFoundation cf_;
  FakeIoKit ioKit_{cf_};
  FakeQuartz quartz_{cf_};
  FakeWorkspace cocoa_;
  MacNotices notices_{cf_.api(), ioKit_.api(), quartz_.api(), cocoa_};
};

class MacPreferencesWorld final : public PreferencesWorld {
 public:
  PreferencesStorage& storage() override { return storage_; }
  void writeAsAnother(std::string_view domain, const ValueMap& values) override {
    const std::string name(domain);
    for (const auto& [key, value] : values) {
      cf_.preferSet(name, key, cf_.live(cfValue(cf_.api(), value).release()));
    }
    changes_.tell(name);
    settle();
  }
  void setWritesFail(bool fail) override {
    if (fail) {
      cf_.fail("CFPreferencesSynchronize");
    } else {
      cf_.succeed("CFPreferencesSynchronize");
    }
  }
  void settle() override { dispatch_.runReady(); }

 private:
  FakeCoreFoundation cf_;
  FakeDispatch dispatch_;
  DispatchMainQueue queue_{dispatch_.api()};
  FakeChanges changes_;
  CfPreferencesStorage storage_{cf_.api(), changes_, queue_, {}};
};

class MacApplicationsWorld final : public ApplicationsWorld {
 public:
  Applications& applications() override { return applications_; }
  void install(const std::string& id, const std::string& name) override {
    cocoa_.bundles.push_back(
        {.path = "/Applications/" + name + ".app", .bundleId = id, .displayName = name});
  }
  void remove(const std::string& id) override {
    std::erase_if(cocoa_.bundles, [&](const CocoaBundle& each) { return each.bundleId == id; });
  }
  void start(const std::string& id) override {
    const auto bundle = cocoa_.bundleWithId(id);
    cocoa_.applications.push_back(
        {.bundleId = id, .name = bundle->displayName, .bundlePath = bundle->path, .regular = true});
  }

 private:
  FakeWorkspace cocoa_;
  MacApplications applications_{cocoa_};
};

// The system's own numbers, with its own idea of what is an error.
class FakeLoginService final : public CocoaLoginService {
 public:
  long status() override { return state; }
  std::optional<Error> registerService() override {
    if (refused) return Error{3, "Operation not permitted"};
    if (state == 1) return Error{12, "already registered"};
    state = 1;
    return std::nullopt;
  }
  std::optional<Error> unregisterService() override {
    if (state == 0) return Error{6, "job not found"};
    state = 0;
    return std::nullopt;
  }
  void openLoginItemsSettings() override { ++shown; }

  long state = 0;
  bool refused = false;
  int shown = 0;
};

class MacLoginWorld final : public LoginItemWorld {
 public:
  LoginItemService& service() override { return item_; }
  void switchOffElsewhere() override { system_.state = 2; }
  void refuse() override { system_.refused = true; }
  int settingsShown() override { return system_.shown; }

 private:
  FakeLoginService system_;
  MacLoginItem item_{system_};
};

class MacTrustWorld final : public TrustWorld {
 public:
  AccessibilityTrust& trust() override { return trust_; }
  void give(bool given) override { accessibility_.trusted = given; }

 private:
  FakeCoreFoundation cf_;
  FakeAccessibility accessibility_{cf_};
  MacTrust trust_{cf_.api(), accessibility_.api()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, MainQueueContract, MacQueueWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventTapsContract, MacTapsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, SternTapsContract, MacTapsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventStreamContract, MacStreamWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventObjectsContract, MacStreamWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ApplicationsContract, MacApplicationsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LoginItemContract, MacLoginWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, TrustContract, MacTrustWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, KeyboardLayoutContract, MacLayoutWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, WorkspaceContract, MacWorkspaceWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, NamelessApplicationContract, MacWorkspaceWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, NoticesContract, MacNoticesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, FailingNoticesContract, MacNoticesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PreferencesContract, MacPreferencesWorld);

}  // namespace
}  // namespace velotap::test
