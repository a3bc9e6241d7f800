// The promises of notices over a /dev, a bus and a display server of the test's own. Runs below
// umockdev-wrapper, without which udev tells of this machine's devices.
#include <umockdev-1.0/umockdev.h>
#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "adapters/linux/notices/linux_notices.hpp"
#include "notices_contract.hpp"
#include "support/child_process.hpp"
#include "support/login_manager.hpp"
#include "support/served_loop.hpp"
#include "support/x_server.hpp"

namespace velotap::test {
namespace {

struct Free {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

// The one screen of a server, switched off and on as the tools for displays do.
class Screen {
 public:
  explicit Screen(const std::string& display)
      : connection_(xcb_connect(display.c_str(), nullptr), &xcb_disconnect) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(server())).data->root;
    const Reply<xcb_randr_get_screen_resources_reply_t> resources(
        xcb_randr_get_screen_resources_reply(
            server(), xcb_randr_get_screen_resources(server(), root), nullptr));
    crtc_ = xcb_randr_get_screen_resources_crtcs(resources.get())[0];
    configured_ = resources->config_timestamp;
    const Reply<xcb_randr_get_crtc_info_reply_t> info(xcb_randr_get_crtc_info_reply(
        server(), xcb_randr_get_crtc_info(server(), crtc_, configured_), nullptr));
    mode_ = info->mode;
    output_ = xcb_randr_get_crtc_info_outputs(info.get())[0];
  }

  void toggle() {
    on_ = !on_;
    const Reply<xcb_randr_set_crtc_config_reply_t> set(xcb_randr_set_crtc_config_reply(
        server(),
        xcb_randr_set_crtc_config(server(), crtc_, XCB_CURRENT_TIME, configured_, 0, 0,
                                  on_ ? mode_ : XCB_NONE, XCB_RANDR_ROTATION_ROTATE_0, on_ ? 1 : 0,
                                  &output_),
        nullptr));
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->status, XCB_RANDR_SET_CONFIG_SUCCESS);
  }

 private:
  [[nodiscard]] xcb_connection_t* server() const { return connection_.get(); }

  std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection_;
  xcb_randr_crtc_t crtc_ = 0;
  xcb_randr_mode_t mode_ = 0;
  xcb_randr_output_t output_ = 0;
  xcb_timestamp_t configured_ = 0;
  bool on_ = true;
};

// Touchpads that come and go. The test bed says of itself that something was added.
class Touchpads {
 public:
  Touchpads() : testbed_(umockdev_testbed_new(), &g_object_unref) {}

  void plug() {
    const std::string number = std::to_string(5 + plugged_.size());
    Plugged device;
    device.above = add("input" + number, nullptr,
                       {"name", "Made up", "phys", "usb-1", "properties", "5", "capabilities/abs",
                        "260800000000003"},
                       {"ID_INPUT", "1"});
    device.node = add("event" + number, device.above.c_str(), {"dev", "13:" + number},
                      {"DEVNAME", "/dev/input/event" + number, "ID_INPUT_TOUCHPAD", "1"});
    plugged_.push_back(std::move(device));
  }
  void unplug() {
    const Plugged device = plugged_.back();
    plugged_.pop_back();
    umockdev_testbed_uevent(testbed_.get(), device.node.c_str(), "remove");
    umockdev_testbed_remove_device(testbed_.get(), device.node.c_str());
    umockdev_testbed_remove_device(testbed_.get(), device.above.c_str());
  }

 private:
  struct Plugged {
    std::string above;
    std::string node;
  };
  using Texts = std::vector<std::string>;

  std::string add(const std::string& name, const char* parent, Texts attributes, Texts properties) {
    const std::unique_ptr<char, void (*)(void*)> path(
        umockdev_testbed_add_devicev(testbed_.get(), "input", name.c_str(), parent,
                                     pointers(attributes).data(), pointers(properties).data()),
        &g_free);
    return path.get();
  }
  static std::vector<char*> pointers(Texts& texts) {
    std::vector<char*> list;
    for (std::string& text : texts) list.push_back(text.data());
    list.push_back(nullptr);
    return list;
  }

  std::unique_ptr<UMockdevTestbed, void (*)(void*)> testbed_;
  std::vector<Plugged> plugged_;
};

// Listens to everything itself, so that it knows when the others have heard.
class LinuxNoticesWorld final : public NoticesWorld, private ServedLoop {
 public:
  LinuxNoticesWorld() {
    // Who listens since when is the bus's matter: the first words may come too early. What was said
    // too often has been heard once the next word is.
    announceUntilHeard();
    hear(sleeps_, [this] { manager_.prepareForSleep(true); });
  }

  SystemNotices& notices() override { return notices_; }
  void attach() override {
    hear(attached_, [this] { touchpads_.plug(); });
  }
  void detach() override {
    hear(detached_, [this] { touchpads_.unplug(); });
  }
  void fallAsleep() override {
    hear(sleeps_, [this] { manager_.prepareForSleep(true); });
  }
  void wakeUp() override {
    hear(wakes_, [this] { manager_.prepareForSleep(false); });
  }
  void reconfigureDisplays() override {
    hear(displayChanges_, [this] { screen_.toggle(); });
  }

 private:
  std::function<void()> counting(int& told) {
    return [this, &told] {
      ++told;
      check();
    };
  }
  void hear(int& told, const std::function<void()>& happening) {
    told = 0;
    happening();
    serveUntil([&told] { return told > 0; });
    queue.runReady();
  }
  void announceUntilHeard() {
    const auto again = std::make_shared<std::function<void()>>();
    std::shared_ptr<DelayedWork> repeated;
    *again = [this, &repeated, weak = std::weak_ptr(again)] {
      manager_.prepareForSleep(false);
      repeated = queue.asyncAfter(0.02, [weak] {
        if (const auto self = weak.lock()) (*self)();
      });
    };
    (*again)();
    serveUntil([this] { return wakes_ > 0; });
    repeated->cancel();
  }
  [[nodiscard]] SessionEnvironment session() const {
    SessionEnvironment session;
    session.display = server_.display();
    return session;
  }

  ChildProcess daemon_{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                       3};
  LoginManager manager_{daemon_.line()};
  XServer server_;
  Screen screen_{server_.display()};
  Touchpads touchpads_;
  LinuxNotices notices_{queue, queue, session(), daemon_.line()};
  int attached_ = 0;
  int detached_ = 0;
  int sleeps_ = 0;
  int wakes_ = 0;
  int displayChanges_ = 0;
  SystemNotices::DeviceWatch devices_ =
      notices_.watchDevices(counting(attached_), counting(detached_));
  Observation sleep_ = notices_.watchSleep(counting(sleeps_), counting(wakes_));
  Observation displays_ = notices_.watchDisplays(counting(displayChanges_));
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, NoticesContract, LinuxNoticesWorld);

}  // namespace
}  // namespace velotap::test
