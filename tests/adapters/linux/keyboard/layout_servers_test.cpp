// The sources of the layout against real servers and stand-ins for them: an X server without a
// screen, a compositor of our own on the library's server side, a private message bus.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <wayland-server.h>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/keyboard/kde_layout_group.hpp"
#include "adapters/linux/keyboard/wayland_layout_source.hpp"
#include "adapters/linux/keyboard/x11_layout_source.hpp"
#include "adapters/linux/keyboard/xcb_xkb.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "support/child_process.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"
#include "support/x_server.hpp"

namespace velotap {
namespace {

class LayoutServersTest : public testing::Test, protected test::ServedLoop {};

class XServerTest : public LayoutServersTest {
 protected:
  void setLayout(std::vector<std::string> options) {
    std::vector<std::string> command = {"setxkbmap", "-display", display};
    command.insert(command.end(), options.begin(), options.end());
    ASSERT_EQ(ChildProcess(command).finish(), 0);
  }
  [[nodiscard]] std::optional<std::string> typed(std::uint16_t code) const {
    return source.keys() ? source.keys()->translate(code) : std::nullopt;
  }

  test::XServer server;
  const std::string& display = server.display();
  X11LayoutSource source{queue, queue, display};
};

TEST_F(XServerTest, theLayoutIsKnownOnceStartedAndFollowed) {
  setLayout({"-layout", "de"});
  source.start([this] { check(); });
  EXPECT_EQ(typed(33), "ü");
  setLayout({"-layout", "fr"});
  serveUntil([this] { return typed(22) == "-"; });
}

/// What a layout switcher does: locks a group of the core keyboard.
void lockGroup(const std::string& display, std::uint8_t group) {
  xcb_connection_t* connection = xcb_connect(display.c_str(), nullptr);
  ASSERT_EQ(xkb_x11_setup_xkb_extension(
                connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr),
            1);
  const auto request = xcb_xkb_latch_lock_state_checked(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0,
                                                        1, group, 0, 0, 0);
  EXPECT_EQ(xcb_request_check(connection, request), nullptr);
  xcb_disconnect(connection);
}

TEST_F(XServerTest, theGroupThatIsSwitchedToIsFollowed) {
  setLayout({"-layout", "us,de"});
  source.start([this] { check(); });
  EXPECT_EQ(typed(33), "[");
  lockGroup(display, 1);
  serveUntil([this] { return typed(33) == "ü"; });
  lockGroup(display, 0);
  serveUntil([this] { return typed(33) == "["; });
}

TEST_F(XServerTest, theGroupInUseAtTheStartIsKnown) {
  setLayout({"-layout", "us,de"});
  lockGroup(display, 1);
  source.start([this] { check(); });
  EXPECT_EQ(typed(33), "ü");
}

TEST_F(XServerTest, aServerThatComesBackIsAskedAgain) {
  setLayout({"-layout", "de"});
  source.start([this] { check(); });
  EXPECT_EQ(typed(33), "ü");
  server.restart();
  EXPECT_EQ(typed(33), "ü") << "what was known stays meanwhile";
  setLayout({"-layout", "fr"});
  serveUntil([this] { return typed(22) == "-"; });
  setLayout({"-layout", "us"});
  serveUntil([this] { return typed(33) == "["; });
}

TEST_F(XServerTest, withoutAServerNothingIsKnown) {
  X11LayoutSource absent(queue, queue, ":65000");
  absent.start([] { FAIL(); });
  EXPECT_FALSE(absent.keys());
}

/// As much of a compositor as a keyboard needs.
class Compositor {
 public:
  Compositor(PosixMainQueue& queue, const TemporaryFolder& folder) : display_(wl_display_create()) {
    socket_ = (folder.path() / "wayland").string();
    if (wl_display_add_socket(display_, "wayland") != 0) throw std::runtime_error("no socket");
    wl_global_create(display_, &wl_seat_interface, 7, this,
                     [](wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
                       auto* self = static_cast<Compositor*>(data);
                       self->seat_ = wl_resource_create(client, &wl_seat_interface,
                                                        static_cast<int>(version), id);
                       wl_resource_set_implementation(self->seat_, &kSeat, self, nullptr);
                       wl_seat_send_capabilities(self->seat_, self->capabilities);
                     });
    serving_ = queue.watch(wl_event_loop_get_fd(wl_display_get_event_loop(display_)),
                           DescriptorLoop::Interest::readable, [this] { serve(); });
  }
  ~Compositor() {
    serving_.reset();
    wl_display_destroy_clients(display_);
    wl_display_destroy(display_);
  }
  Compositor(const Compositor&) = delete;
  Compositor& operator=(const Compositor&) = delete;

  void serve() {
    wl_event_loop_dispatch(wl_display_get_event_loop(display_), 0);
    wl_display_flush_clients(display_);
  }
  void sendKeymap(const std::string& text,
                  std::uint32_t format = WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
    const int descriptor = memfd_create("keymap", MFD_CLOEXEC);
    const std::size_t size = text.size() + 1;
    ASSERT_EQ(::write(descriptor, text.c_str(), size), static_cast<ssize_t>(size));
    wl_keyboard_send_keymap(keyboard, format, descriptor, static_cast<std::uint32_t>(size));
    ::close(descriptor);
    wl_display_flush_clients(display_);
  }
  void setCapabilities(std::uint32_t now) {
    capabilities = now;
    wl_seat_send_capabilities(seat_, now);
    wl_display_flush_clients(display_);
  }
  [[nodiscard]] const std::string& socket() const { return socket_; }

  std::uint32_t capabilities = WL_SEAT_CAPABILITY_POINTER | WL_SEAT_CAPABILITY_KEYBOARD;
  wl_resource* keyboard = nullptr;
  std::string keymap;  ///< sent to each new keyboard
  int keyboards = 0;

 private:
  static void getKeyboard(wl_client* client, wl_resource* seat, std::uint32_t id) {
    auto* self = static_cast<Compositor*>(wl_resource_get_user_data(seat));
    self->keyboard =
        wl_resource_create(client, &wl_keyboard_interface, wl_resource_get_version(seat), id);
    static const wl_keyboard_interface_t kKeyboard = {
        .release = [](wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }};
    wl_resource_set_implementation(self->keyboard, &kKeyboard, self, nullptr);
    ++self->keyboards;
    self->sendKeymap(self->keymap);
  }
  using wl_keyboard_interface_t = struct wl_keyboard_interface;
  using wl_seat_interface_t = struct wl_seat_interface;
  static constexpr wl_seat_interface_t kSeat = {
      .get_pointer = [](wl_client*, wl_resource*, std::uint32_t) {},
      .get_keyboard = getKeyboard,
      .get_touch = [](wl_client*, wl_resource*, std::uint32_t) {},
      .release = [](wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }};

  wl_display* display_;
  std::string socket_;
  wl_resource* seat_ = nullptr;
  Observation serving_;
};

std::string keymapText(const char* layouts) {
  const XkbContext context = makeQuietContext();
  const xkb_rule_names names = {
      .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = ""};
  const XkbKeymap keymap(
      xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
  const std::unique_ptr<char, decltype(&std::free)> text(
      xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1), &std::free);
  return text.get();
}

class CompositorTest : public LayoutServersTest {
 protected:
  CompositorTest() {
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    compositor.emplace(queue, folder);
  }
  ~CompositorTest() override { unsetenv("XDG_RUNTIME_DIR"); }
  void start() {
    source.emplace(queue, queue, compositor->socket());
    source->start([this] { check(); });
  }
  [[nodiscard]] std::optional<std::string> typed(std::uint16_t code) const {
    return source->keys() ? source->keys()->translate(code) : std::nullopt;
  }
  TemporaryFolder folder;
  std::optional<Compositor> compositor;
  std::optional<WaylandLayoutSource> source;
};

TEST_F(CompositorTest, theKeymapComesWithoutTheFocusAndIsFollowed) {
  compositor->keymap = keymapText("de");
  start();
  serveUntil([this] { return typed(33) == "ü"; });
  compositor->sendKeymap(keymapText("us"));
  serveUntil([this] { return typed(33) == "["; });
}

TEST_F(CompositorTest, theGroupIsWhatSomebodyElseTells) {
  compositor->keymap = keymapText("us,de");
  start();
  source->useGroup(1);
  serveUntil([this] { return typed(33) == "ü"; });
  source->useGroup(0);
  EXPECT_EQ(typed(33), "[");
}

TEST_F(CompositorTest, keymapsThatCannotBeReadLeaveTheLastOne) {
  compositor->keymap = keymapText("de");
  start();
  serveUntil([this] { return typed(33) == "ü"; });
  compositor->sendKeymap("no keymap at all");
  compositor->sendKeymap(keymapText("fr"), WL_KEYBOARD_KEYMAP_FORMAT_NO_KEYMAP);
  compositor->sendKeymap(keymapText("us"));
  serveUntil([this] { return typed(33) == "["; });
}

TEST_F(CompositorTest, aKeyboardThatIsUnpluggedAndComesBackIsAskedAgain) {
  compositor->keymap = keymapText("de");
  start();
  serveUntil([this] { return typed(33) == "ü"; });
  compositor->setCapabilities(WL_SEAT_CAPABILITY_POINTER);
  compositor->keymap = keymapText("us");
  compositor->setCapabilities(WL_SEAT_CAPABILITY_POINTER | WL_SEAT_CAPABILITY_KEYBOARD);
  serveUntil([this] { return typed(33) == "["; });
  EXPECT_EQ(compositor->keyboards, 2);
}

TEST_F(CompositorTest, aCompositorThatComesLaterOrComesBackIsAskedAgain) {
  const std::string socket = compositor->socket();
  compositor.reset();
  source.emplace(queue, queue, socket);
  source->start([this] { check(); });
  EXPECT_FALSE(source->keys());
  for (const bool german : {true, false}) {
    const char* character = german ? "ü" : "[";
    compositor.emplace(queue, folder);
    compositor->keymap = keymapText(german ? "de" : "us");
    serveUntil([&] { return typed(33) == character; });
    compositor.reset();
    queue.runReady();
    EXPECT_EQ(typed(33), character) << "what was known stays meanwhile";
  }
}

TEST_F(CompositorTest, withoutACompositorNothingIsKnown) {
  WaylandLayoutSource absent(queue, queue, (folder.path() / "absent").string());
  absent.start([] { FAIL(); });
  queue.runReady();
  EXPECT_FALSE(absent.keys());
}

/// KDE's keyboard service on a private bus.
class KeyboardService {
 public:
  KeyboardService(PosixMainQueue& queue, const std::string& address) {
    if (sd_bus_new(&bus_) < 0 || sd_bus_set_address(bus_, address.c_str()) < 0 ||
        sd_bus_set_bus_client(bus_, 1) < 0 || sd_bus_start(bus_) < 0 ||
        sd_bus_add_object_vtable(bus_, nullptr, "/Layouts", "org.kde.KeyboardLayouts", kMethods,
                                 this) < 0 ||
        sd_bus_request_name(bus_, "org.kde.keyboard", 0) < 0) {
      throw std::runtime_error("no service");
    }
    serving_ = queue.watch(sd_bus_get_fd(bus_), DescriptorLoop::Interest::readable, [this] {
      while (sd_bus_process(bus_, nullptr) > 0) {
      }
    });
  }
  ~KeyboardService() {
    serving_.reset();
    sd_bus_flush_close_unref(bus_);
  }
  KeyboardService(const KeyboardService&) = delete;
  KeyboardService& operator=(const KeyboardService&) = delete;

  void switchTo(std::uint32_t layout) {
    group = layout;
    sd_bus_emit_signal(bus_, "/Layouts", "org.kde.KeyboardLayouts", "layoutChanged", "u", layout);
  }
  void changeList(std::uint32_t layout) {
    group = layout;
    sd_bus_emit_signal(bus_, "/Layouts", "org.kde.KeyboardLayouts", "layoutListChanged", "");
  }
  std::uint32_t group = 0;

 private:
  static int getLayout(sd_bus_message* message, void* data, sd_bus_error*) {
    return sd_bus_reply_method_return(message, "u", static_cast<KeyboardService*>(data)->group);
  }
  static const sd_bus_vtable kMethods[];
  sd_bus* bus_ = nullptr;
  Observation serving_;
};
const sd_bus_vtable KeyboardService::kMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("getLayout", "", "u", &KeyboardService::getLayout, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("layoutChanged", "u", 0), SD_BUS_SIGNAL("layoutListChanged", "", 0),
    SD_BUS_VTABLE_END};

class KdeBusTest : public LayoutServersTest {
 protected:
  using Groups = std::vector<std::uint32_t>;
  void startBus() {
    daemon.emplace(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                            "--address=" + address, "--print-address=3"},
                   3);
    ASSERT_FALSE(daemon->line().empty()) << "the bus listens once it has said where";
  }

  TemporaryFolder folder;
  const std::string socket = (folder.path() / "bus").string();
  const std::string address = "unix:path=" + socket;
  std::optional<ChildProcess> daemon;
  Groups groups;
  KdeLayoutGroup follower{queue, queue, address, [this](std::uint32_t group) {
                            groups.push_back(group);
                            check();
                          }};
};

TEST_F(KdeBusTest, asksForTheLayoutAndFollowsIt) {
  startBus();
  KeyboardService service(queue, address);
  service.group = 1;
  follower.start();
  serveUntil([this] { return groups == Groups{1}; });
  service.switchTo(2);
  serveUntil([this] { return groups == Groups{1, 2}; });
  service.changeList(0);
  serveUntil([this] { return groups == Groups{1, 2, 0}; });
}

TEST_F(KdeBusTest, waitsForAServiceThatComesLater) {
  startBus();
  follower.start();
  queue.runReady();
  EXPECT_TRUE(groups.empty());
  KeyboardService service(queue, address);
  service.group = 3;
  serveUntil([this] { return groups == Groups{3}; });
}

TEST_F(KdeBusTest, aBusThatComesLaterOrComesBackIsFollowed) {
  follower.start();
  for (const std::uint32_t round : {0U, 1U}) {
    startBus();
    std::optional<KeyboardService> service(std::in_place, queue, address);
    service->group = round + 5;
    serveUntil([&] { return groups == Groups{round + 5}; });
    groups.clear();
    service.reset();
    daemon.reset();
    std::filesystem::remove(socket);
  }
}

}  // namespace
}  // namespace velotap
