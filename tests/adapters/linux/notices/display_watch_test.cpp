// The displays of real and stand-in servers: an X server without a screen, a compositor of our own
// on the library's server side.
#include "adapters/linux/notices/display_watch.hpp"

#include <gtest/gtest.h>
#include <wayland-server.h>
#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "support/child_process.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"
#include "support/x_server.hpp"

namespace velotap {
namespace {

class DisplayWatchTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  std::function<void()> counting() {
    return [this] {
      ++told_;
      check();
    };
  }
  int told_ = 0;
};

struct FreeDeleter {
  void operator()(void* memory) const noexcept { std::free(memory); }
};

/// Switches the first controller of the screen off, as the tools for displays do.
void switchOff(const std::string& display) {
  const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection(
      xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
  const std::unique_ptr<xcb_randr_get_screen_resources_reply_t, FreeDeleter> resources(
      xcb_randr_get_screen_resources_reply(
          connection.get(), xcb_randr_get_screen_resources(connection.get(), root), nullptr));
  ASSERT_NE(resources, nullptr);
  ASSERT_GT(resources->num_crtcs, 0);
  const std::unique_ptr<xcb_randr_set_crtc_config_reply_t, FreeDeleter> set(
      xcb_randr_set_crtc_config_reply(
          connection.get(),
          xcb_randr_set_crtc_config(connection.get(),
                                    xcb_randr_get_screen_resources_crtcs(resources.get())[0],
                                    XCB_CURRENT_TIME, resources->config_timestamp, 0, 0, XCB_NONE,
                                    XCB_RANDR_ROTATION_ROTATE_0, 0, nullptr),
          nullptr));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(set->status, XCB_RANDR_SET_CONFIG_SUCCESS);
}

class XDisplaysTest : public DisplayWatchTest {
 protected:
  test::XServer server_;
  const std::string& display_ = server_.display();
};

TEST_F(XDisplaysTest, AChangeIsTold) {
  const auto watch = watchX11Displays(queue, display_, counting());
  queue.runReady();
  EXPECT_EQ(told_, 0) << "what is there at first is no change";
  switchOff(display_);
  serveUntil([this] { return told_ > 0; });
}

TEST_F(XDisplaysTest, NothingIsToldAfterTheEnd) {
  auto watch = watchX11Displays(queue, display_, counting());
  bool heard = false;
  const auto other = watchX11Displays(queue, display_, [&] {
    heard = true;
    check();
  });
  watch.reset();
  switchOff(display_);
  serveUntil([&heard] { return heard; });
  EXPECT_EQ(told_, 0);
}

TEST_F(XDisplaysTest, AServerThatGoesIsSilent) {
  const auto watch = watchX11Displays(queue, display_, counting());
  server_.stop();
  queue.runReady();
  EXPECT_EQ(told_, 0);
}

TEST_F(DisplayWatchTest, WithoutAnXServerNothingIsTold) {
  const auto watch = watchX11Displays(queue, ":65000", counting());
  queue.runReady();
  EXPECT_EQ(told_, 0);
}

/// As much of a compositor as displays need.
class Compositor {
 public:
  Compositor(PosixMainQueue& queue, const TemporaryFolder& folder)
      : display_(wl_display_create()), socket_((folder.path() / "wayland").string()) {
    if (wl_display_add_socket(display_, "wayland") != 0) throw std::runtime_error("no socket");
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

  wl_global* connectDisplay() {
    auto* const global = wl_global_create(
        display_, &wl_output_interface, 2, this,
        [](wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
          auto* const self = static_cast<Compositor*>(data);
          self->output_ =
              wl_resource_create(client, &wl_output_interface, static_cast<int>(version), id);
          self->describe(1920);
          ++self->described;
        });
    wl_display_flush_clients(display_);
    return global;
  }
  void disconnect(wl_global* output) {
    wl_global_destroy(output);
    wl_display_flush_clients(display_);
  }
  /// Of the display that was bound last.
  void describe(int width) {
    wl_output_send_mode(output_, WL_OUTPUT_MODE_CURRENT, width, 1080, 60000);
    wl_output_send_done(output_);
    wl_display_flush_clients(display_);
  }
  void serve() {
    wl_event_loop_dispatch(wl_display_get_event_loop(display_), 0);
    wl_display_flush_clients(display_);
    if (served) served();
  }
  [[nodiscard]] const std::string& socket() const { return socket_; }

  int described = 0;
  std::function<void()> served;

 private:
  wl_display* display_;
  std::string socket_;
  wl_resource* output_ = nullptr;
  Observation serving_;
};

class WaylandDisplaysTest : public DisplayWatchTest {
 protected:
  WaylandDisplaysTest() {
    setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
    compositor_.emplace(queue, folder_);
    first_ = compositor_->connectDisplay();
    compositor_->served = [this] { check(); };
  }
  ~WaylandDisplaysTest() override { unsetenv("XDG_RUNTIME_DIR"); }
  /// Until the display that was there at first has described itself, and all of that was read.
  std::unique_ptr<DisplayWatch> startWatching() {
    auto watch = watchWaylandDisplays(queue, compositor_->socket(), counting());
    serveUntil([this] { return compositor_->described == 1; });
    for (int turns = 0; turns < 8; ++turns) queue.runReady();
    return watch;
  }

  TemporaryFolder folder_;
  std::optional<Compositor> compositor_;
  wl_global* first_ = nullptr;
};

TEST_F(WaylandDisplaysTest, WhatIsThereAtFirstIsNoChange) {
  const auto watch = startWatching();
  EXPECT_EQ(told_, 0);
}

TEST_F(WaylandDisplaysTest, ANewModeIsTold) {
  const auto watch = startWatching();
  compositor_->describe(1280);
  serveUntil([this] { return told_ == 1; });
}

TEST_F(WaylandDisplaysTest, ANewDisplayIsTold) {
  const auto watch = startWatching();
  compositor_->connectDisplay();
  serveUntil([this] { return told_ == 1; });
}

TEST_F(WaylandDisplaysTest, ADisplayThatIsTakenAwayIsTold) {
  const auto watch = startWatching();
  compositor_->disconnect(first_);
  serveUntil([this] { return told_ == 1; });
}

TEST_F(WaylandDisplaysTest, ACompositorThatGoesIsSilent) {
  const auto watch = startWatching();
  compositor_.reset();
  queue.runReady();
  EXPECT_EQ(told_, 0);
}

TEST_F(DisplayWatchTest, AsksTheServerOfTheSession) {
  EXPECT_EQ(watchDisplays(queue, SessionEnvironment{}, counting()), nullptr);
  SessionEnvironment wayland;
  wayland.sessionType = "wayland";
  wayland.display = ":65000";
  EXPECT_EQ(watchDisplays(queue, wayland, counting()), nullptr) << "no place for a socket";
  wayland.runtimeFolder = "/nonexistent";
  EXPECT_NE(watchDisplays(queue, wayland, counting()), nullptr);
  SessionEnvironment x;
  x.display = ":65000";
  EXPECT_NE(watchDisplays(queue, x, counting()), nullptr);
}

}  // namespace
}  // namespace velotap
