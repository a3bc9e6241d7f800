#include <array>
#include <cstdio>
#include <variant>

#include "adapters/simulated/simulated_clock.hpp"
#include "adapters/simulated/simulated_event_stream.hpp"
#include "adapters/simulated/simulated_event_taps.hpp"
#include "adapters/simulated/simulated_keyboard_layout.hpp"
#include "adapters/simulated/simulated_main_queue.hpp"
#include "adapters/simulated/simulated_multitouch.hpp"
#include "adapters/simulated/simulated_notices.hpp"
#include "adapters/simulated/simulated_trust.hpp"
#include "adapters/simulated/simulated_workspace.hpp"
#include "addresses_contract.hpp"
#include "app/shell_fakes.hpp"
#include "applications_contract.hpp"
#include "clock_contract.hpp"
#include "event_stream_contract.hpp"
#include "event_taps_contract.hpp"
#include "failing_notices_contract.hpp"
#include "keyboard_layout_contract.hpp"
#include "libraries_contract.hpp"
#include "login_item_contract.hpp"
#include "main_queue_contract.hpp"
#include "settings/fake_applications.hpp"
#include "support/recording_urls.hpp"
#include "trust_contract.hpp"
#include "workspace_contract.hpp"

namespace velotap::test {
namespace {

class SimulatedQueueWorld final : public MainQueueWorld {
 public:
  MainQueue& queue() override { return queue_; }
  void runReady() override { queue_.runDue(); }
  void advance(double seconds) override {
    queue_.runUntil(clock_.now() + std::chrono::duration_cast<VirtualTime>(
                                       std::chrono::duration<double>(seconds)));
  }

 private:
  SimulatedClock clock_;
  SimulatedMainQueue queue_{clock_};
};

class SimulatedTapsWorld final : public SternTapsWorld {
 public:
  EventTaps& taps() override { return taps_; }
  void refuse(TapLocation location) override { taps_.setInstallable(location, false); }
  std::optional<WorldEvent> click(WorldEvent press) override {
    ++number_;
    const auto passed = send(press);
    send(releaseOf(press));
    return passed;
  }
  void timeOut() override { taps_.disable(TapLocation::session, TapDisabled::byTimeout, true); }
  void disableForGood(TapDisabled reason) override {
    taps_.disable(TapLocation::session, reason, false);
  }

 private:
  std::optional<WorldEvent> send(WorldEvent event) {
    const auto passed = taps_.send({event.type, event.button, number_}, EventOrigin::session);
    if (!passed) return std::nullopt;
    return WorldEvent{passed->type, passed->button};
  }

  std::int64_t number_ = 0;
  SimulatedEventTaps taps_;
};

std::string hexadecimal(std::uint64_t value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "0x%llx", static_cast<unsigned long long>(value));
  return text.data();
}

struct Line {
  std::string operator()(const MouseEvent& event) const {
    return "mouse " + std::to_string(static_cast<int>(event.type)) + " " +
           std::to_string(event.button);
  }
  std::string operator()(const KeyEvent& event) const {
    return "key " + std::to_string(event.keyCode) + (event.down ? " down " : " up ") +
           hexadecimal(event.flags);
  }
  std::string operator()(const GestureEvent& event) const {
    return (event.kind == GestureKind::magnify ? "magnify " : "rotate ") +
           std::to_string(static_cast<int>(event.phase)) + " " + number(event.value) +
           place(event.location.x, event.location.y);
  }
};

class SimulatedStreamWorld final : public EventObjectsWorld {
 public:
  EventStream& events() override { return events_; }
  void setPointer(std::optional<Point> location) override { events_.setPointer(location); }
  void failMouse() override {
    events_.setMouseFailure([](MouseEventType) { return true; });
  }
  void failKeys() override {
    events_.setKeyFailure([](bool) { return true; });
  }
  std::vector<std::string> posted() override { return posted_; }
  std::vector<std::string> places() override { return places_; }

 private:
  SimulatedEventStream events_;
  std::vector<std::string> posted_;
  std::vector<std::string> places_;
  Observation posts_ = events_.observePosts([this](const PostedEvent& event) {
    posted_.push_back(std::visit(Line(), event));
    if (const auto* mouse = std::get_if<MouseEvent>(&event)) {
      places_.push_back(place(mouse->location.x, mouse->location.y));
    }
  });
};

class SimulatedLayoutWorld final : public KeyboardLayoutWorld {
 public:
  KeyboardLayout& layout() override { return layout_; }
  void select(std::optional<Keys> keys) override { layout_.select(std::move(keys)); }

 private:
  SimulatedKeyboardLayout layout_;
};

class SimulatedWorkspaceWorld final : public WorkspaceWorld {
 public:
  Workspace& workspace() override { return workspace_; }
  void activate(std::optional<RunningApplication> application) override {
    workspace_.activate(std::move(application));
  }

 private:
  SimulatedWorkspace workspace_;
};

class SimulatedNoticesWorld final : public FailingNoticesWorld {
 public:
  SystemNotices& notices() override { return notices_; }
  void attach() override { notices_.deviceAttached(); }
  void detach() override { notices_.deviceDetached(); }
  void fallAsleep() override { notices_.willSleep(); }
  void wakeUp() override { notices_.didWake(); }
  void reconfigureDisplays() override { notices_.displayReconfigured(); }
  void failPort() override {
    failures_.port = true;
    notices_.setFailures(failures_);
  }
  void failAttach(int error) override {
    failures_.attach = error;
    notices_.setFailures(failures_);
  }
  void failDetach(int error) override {
    failures_.detach = error;
    notices_.setFailures(failures_);
  }

 private:
  SimulatedNotices notices_;
  SimulatedNotices::Failures failures_;
};

// What the tests of panes and menus are played over, in place of a system's.
class FakeApplicationsWorld final : public ApplicationsWorld {
 public:
  Applications& applications() override { return applications_; }
  void install(const std::string& id, const std::string& name) override {
    applications_.install(id, name);
  }
  void remove(const std::string& id) override { applications_.byId.erase(id); }
  void start(const std::string& id) override {
    applications_.instances.push_back(
        {.bundleId = id, .name = applications_.byId.at(id).displayName, .regular = true});
  }

 private:
  FakeApplications applications_;
};

class FakeLoginWorld final : public LoginItemWorld {
 public:
  LoginItemService& service() override { return item_; }
  void switchOffElsewhere() override { item_.now = LoginItemStatus::requiresApproval; }
  void refuse() override { item_.error = "Operation not permitted"; }
  int settingsShown() override { return item_.settingsOpened; }

 private:
  FakeLoginItem item_;
};

class SimulatedTrustWorld final : public TrustWorld {
 public:
  AccessibilityTrust& trust() override { return trust_; }
  void give(bool given) override { trust_.setTrusted(given); }

 private:
  SimulatedTrust trust_;
};

class SimulatedClockWorld final : public ClockWorld {
 public:
  Clock& clock() override { return clock_; }
  void pass() override { clock_.advanceTo(clock_.now() + std::chrono::milliseconds(1)); }

 private:
  SimulatedClock clock_;
};

class SimulatedLibrariesWorld final : public LibrariesWorld {
 public:
  LibraryLoader& loader() override { return multitouch_; }
  [[nodiscard]] const char* library() const override { return "simulated"; }
  [[nodiscard]] const char* symbol() const override { return "MTDeviceCreateList"; }
  [[nodiscard]] const char* missingLibrary() override {
    multitouch_.setMissing(true);
    return "simulated";
  }

 private:
  SimulatedMultitouch multitouch_;
};

class RecordingAddressesWorld final : public AddressesWorld {
 public:
  UrlOpener& urls() override { return urls_; }
  void havePrograms(bool have) override { urls_.works = have; }
  void serveUntil(const std::function<bool()>& done) override { EXPECT_TRUE(done()); }
  std::vector<std::string> arrived() override { return urls_.opened; }

 private:
  RecordingUrls urls_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, MainQueueContract, SimulatedQueueWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, EventTapsContract, SimulatedTapsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, SternTapsContract, SimulatedTapsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, EventStreamContract, SimulatedStreamWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, EventObjectsContract, SimulatedStreamWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, TrustContract, SimulatedTrustWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, KeyboardLayoutContract, SimulatedLayoutWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, WorkspaceContract, SimulatedWorkspaceWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, NamelessApplicationContract, SimulatedWorkspaceWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, NoticesContract, SimulatedNoticesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, FailingNoticesContract, SimulatedNoticesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, ApplicationsContract, FakeApplicationsWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, LoginItemContract, FakeLoginWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, ClockContract, SimulatedClockWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, LibrariesContract, SimulatedLibrariesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, AddressesContract, RecordingAddressesWorld);

}  // namespace
}  // namespace velotap::test
