#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

#include "adapters/linux/applications/linux_applications.hpp"
#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/xkb_keyboard_layout.hpp"
#include "adapters/linux/notices/session_activity.hpp"
#include "adapters/linux/output/uinput_event_stream.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "adapters/linux/services/autostart_item.hpp"
#include "adapters/linux/services/seat_trust.hpp"
#include "adapters/linux/workspace/linux_workspace.hpp"
#include "adapters/simulated/simulated_trust.hpp"
#include "applications_contract.hpp"
#include "event_stream_contract.hpp"
#include "keyboard_layout_contract.hpp"
#include "linux/output/recording_device.hpp"
#include "linux/workspace/desktop_entry_text.hpp"
#include "linux/workspace/fake_sources.hpp"
#include "login_item_contract.hpp"
#include "main_queue_contract.hpp"
#include "support/recording_log.hpp"
#include "support/recording_urls.hpp"
#include "support/temporary_folder.hpp"
#include "support/virtual_time.hpp"
#include "trust_contract.hpp"
#include "workspace_contract.hpp"

namespace velotap::test {
namespace {

class PosixQueueWorld final : public MainQueueWorld {
 public:
  MainQueue& queue() override { return queue_; }
  void runReady() override { queue_.runReady(); }
  /// Waits for the queue's own timer.
  void advance(double seconds) override {
    static_cast<void>(queue_.asyncAfter(seconds, [this] { queue_.stop(); }));
    queue_.run();
  }

 private:
  PosixClock clock_;
  PosixMainQueue queue_{clock_};
};

// Counts what is posted, because the output writes some of it later, on a thread of its own.
class CountingStream final : public EventStream {
 public:
  explicit CountingStream(EventStream& events) : events_(events) {}
  std::optional<Point> pointerLocation() override { return events_.pointerLocation(); }
  std::optional<MouseEvent> makeMouse(MouseEventType type, int button, Point location) override {
    return events_.makeMouse(type, button, location);
  }
  void post(const MouseEvent& event) override {
    ++mouseEvents;
    events_.post(event);
  }
  std::optional<KeyEvent> makeKey(std::uint16_t code, bool down) override {
    return events_.makeKey(code, down);
  }
  void post(const KeyEvent& event) override { events_.post(event); }
  void post(const GestureEvent& event) override { events_.post(event); }
  void prepareGestures() override { events_.prepareGestures(); }

  std::size_t mouseEvents = 0;

 private:
  EventStream& events_;
};

class UinputStreamWorld final : public EventStreamWorld {
 public:
  UinputStreamWorld() { static_cast<void>(device_.open()); }
  EventStream& events() override { return counting_; }
  std::vector<std::string> posted() override {
    std::vector<std::string> lines;
    for (const auto& frame : device_.awaitFrames(counting_.mouseEvents)) {
      const std::string said = spoken(frame);
      lines.push_back(said == "+274" ? "mouse 25 2" : said == "-274" ? "mouse 26 2" : said);
    }
    lines.insert(lines.end(), gestures_.begin(), gestures_.end());
    return lines;
  }

 private:
  void keep(const GestureEvent& event) {
    gestures_.push_back((event.kind == GestureKind::magnify ? "magnify " : "rotate ") +
                        std::to_string(static_cast<int>(event.phase)) + " " + number(event.value) +
                        place(event.location.x, event.location.y));
  }

  const int noServer_ = ::unsetenv("DISPLAY");
  PosixClock clock_;
  PosixMainQueue queue_{clock_};
  RecordingDevice device_;
  PacedOutput output_{device_, clock_, [](const char*, int) {}};
  PointerLocator locator_{clock_, queue_};
  std::vector<std::string> gestures_;
  UinputEventStream stream_{output_, locator_, [this](const GestureEvent& e) { keep(e); }, [] {}};
  CountingStream counting_{stream_};
};

// Knows a layout when the test says so.
class ScriptedSource final : public LayoutSource {
 public:
  void start(std::function<void()> changed) override { listenWith(std::move(changed)); }
  void say(const std::string& keymap) { know(groupAt(compileText(keymap), 0)); }
};

class XkbLayoutWorld final : public KeyboardLayoutWorld {
 public:
  KeyboardLayout& layout() override { return layout_; }
  void select(std::optional<Keys> keys) override {
    if (keys) source_->say(keymap(*keys));
  }

 private:
  // A keymap in which the keys type characters of the first two kinds of bytes, and all others
  // nothing.
  static std::string keymap(const Keys& keys) {
    std::string codes;
    std::string symbols;
    for (const auto& [code, text] : keys) {
      const std::string name = "<K" + std::to_string(code) + ">";
      codes += name + " = " + std::to_string(evdevCodeOf(code).value() + 8) + ";\n";
      symbols += "key " + name + " { [ " + symbol(text) + " ] };\n";
    }
    return "xkb_keymap {\nxkb_keycodes { minimum = 8; maximum = 255;\n" + codes +
           "};\nxkb_types { include \"complete\" };\nxkb_compat { include \"complete\" };\n"
           "xkb_symbols {\n" +
           symbols + "};\n};\n";
  }
  static std::string symbol(const std::string& text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const unsigned point =
        text.size() == 1 ? first
                         : (first & 0x1FU) << 6 | (static_cast<unsigned char>(text[1]) & 0x3FU);
    std::array<char, 16> name{};
    std::snprintf(name.data(), name.size(), "U%04X", point);
    return name.data();
  }
  std::vector<std::unique_ptr<LayoutSource>> sources() {
    std::vector<std::unique_ptr<LayoutSource>> made;
    made.push_back(std::make_unique<ScriptedSource>());
    source_ = static_cast<ScriptedSource*>(made[0].get());
    return made;
  }

  ScriptedSource* source_ = nullptr;
  XkbKeyboardLayout layout_{sources()};
};

class DesktopEntriesWorld final : public ApplicationsWorld {
 public:
  Applications& applications() override { return applications_; }
  void install(const std::string& id, const std::string& name) override {
    folder_.replace(id + ".desktop", "[Desktop Entry]\nType=Application\nName=" + name +
                                         "\nExec=/usr/bin/" + id + "\n");
    loop_.runReady();
  }
  void remove(const std::string& id) override {
    std::filesystem::remove(folder_.path() / (id + ".desktop"));
    loop_.runReady();
  }
  void start(const std::string& id) override {
    programs_.push_back({.program = id, .application = ""});
  }

 private:
  PosixClock clock_;
  PosixMainQueue loop_{clock_};
  TemporaryFolder folder_;
  InstalledApplications installed_{loop_, {folder_.path().string()}, {}};
  std::vector<RunningProgram> programs_;
  LinuxApplications applications_{installed_, [this] { return programs_; }};
};

// A desktop that tells of its windows as the test says.
class LinuxWorkspaceWorld final : public WorkspaceWorld {
 public:
  LinuxWorkspaceWorld() {
    workspace_.start();
    source().live();
  }
  Workspace& workspace() override { return workspace_; }
  void activate(std::optional<RunningApplication> application) override {
    if (application && !application->name.empty()) {
      const std::string id(application->bundleId.text());
      folder_.replace(id + ".desktop", desktopEntry(application->name));
      loop_.runReady();
    }
    source().front(
        application ? std::optional(FrontWindow{.appId = std::string(application->bundleId.text())})
                    : std::nullopt);
    queue_.advance(1);  // that nothing is in front is believed after a while only
  }

 private:
  FrontSource::Listener& source() { return sources_[FrontSourceKind::x11]; }

  PosixClock realClock_;
  PosixMainQueue loop_{realClock_};
  ExactClock clock_;
  VirtualQueue queue_{clock_};
  RecordingLog log_;
  TemporaryFolder folder_;
  FakeSources sources_;
  LinuxWorkspace workspace_{AppId::intern("app.norwend.velotap"),
                            {.candidates = {sources_.candidate(FrontSourceKind::x11)},
                             .recovery = std::make_unique<FakeRecovery>(),
                             .applicationFolders = {folder_.path().string()},
                             .languages = {"en"}},
                            {.loop = loop_, .queue = queue_, .clock = clock_, .log = log_}};
};

class AutostartWorld final : public LoginItemWorld {
 public:
  AutostartWorld() {
    folder_.replace("velotap", "#!/bin/sh\n");
    std::filesystem::permissions(folder_.path() / "velotap", std::filesystem::perms::owner_all);
  }
  LoginItemService& service() override { return item_; }
  void switchOffElsewhere() override {
    std::ofstream(item_.file(), std::ios::app) << "Hidden=true\n";
  }
  // A file stands where the folder would have to be made.
  void refuse() override { folder_.replace("autostart", "not a folder"); }
  int settingsShown() override { return static_cast<int>(urls_.opened.size()); }

 private:
  TemporaryFolder folder_;
  test::RecordingUrls urls_;
  AutostartItem item_{(folder_.path() / "autostart").string(),
                      (folder_.path() / "velotap").string(), urls_};
};

class SeatTrustWorld final : public TrustWorld {
 public:
  AccessibilityTrust& trust() override { return trust_; }
  void give(bool given) override { devices_.setTrusted(given); }

 private:
  PosixClock clock_;
  PosixMainQueue loop_{clock_};
  SimulatedTrust devices_;
  SessionActivity activity_{loop_, nullptr};
  SeatTrust trust_{devices_, activity_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, MainQueueContract, PosixQueueWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, EventStreamContract, UinputStreamWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, KeyboardLayoutContract, XkbLayoutWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ApplicationsContract, DesktopEntriesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, LoginItemContract, AutostartWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WorkspaceContract, LinuxWorkspaceWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, TrustContract, SeatTrustWorld);

}  // namespace
}  // namespace velotap::test
