// Against an X server without a screen, whose pointer is given the properties of a touchpad.
#include "adapters/linux/desktop_settings/x11_touchpads.hpp"

#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/desktop_settings/linux_system_preferences.hpp"
#include "support/served_loop.hpp"
#include "support/x_server.hpp"

namespace velotap {
namespace {

/// What a desktop does: it writes the properties of devices.
class Desktop {
 public:
  explicit Desktop(const std::string& display)
      : connection_(xcb_connect(display.c_str(), nullptr)) {
    free(xcb_input_xi_query_version_reply(connection_,
                                          xcb_input_xi_query_version(connection_, 2, 2), nullptr));
    auto* devices = xcb_input_xi_query_device_reply(
        connection_, xcb_input_xi_query_device(connection_, XCB_INPUT_DEVICE_ALL), nullptr);
    for (auto i = xcb_input_xi_query_device_infos_iterator(devices); i.rem > 0;
         xcb_input_xi_device_info_next(&i)) {
      if (i.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER) pointer_ = i.data->deviceid;
    }
    free(devices);
  }
  ~Desktop() { xcb_disconnect(connection_); }
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  void set(std::string_view name, std::vector<std::uint8_t> values) const {
    const auto count = static_cast<std::uint32_t>(values.size());
    // The library sends whole words.
    values.resize((values.size() + 3) / 4 * 4);
    change(name, 8, count, values.data());
  }
  void set(std::string_view name, const std::vector<std::uint32_t>& values) const {
    change(name, 32, static_cast<std::uint32_t>(values.size()), values.data());
  }

 private:
  void change(std::string_view name, std::uint8_t format, std::uint32_t count,
              const void* values) const {
    auto* atom = xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    auto* error = xcb_request_check(
        connection_,
        xcb_input_xi_change_property_checked(connection_, pointer_, XCB_PROP_MODE_REPLACE, format,
                                             atom->atom, XCB_ATOM_INTEGER, count, values));
    EXPECT_EQ(error, nullptr) << name;
    free(error);
    free(atom);
  }
  xcb_connection_t* connection_;
  xcb_input_device_id_t pointer_ = 0;
};

class X11TouchpadsTest : public testing::Test, protected test::ServedLoop {
 protected:
  void start() {
    touchpads.emplace(queue, queue, display, [this] { check(); });
  }
  [[nodiscard]] const DesktopTouchpads& all() const { return touchpads->touchpads(); }
  test::XServer server;
  const std::string& display = server.display();
  Desktop desktop{display};
  std::optional<X11Touchpads> touchpads;
};

TEST_F(X11TouchpadsTest, aPointerWithoutATouchpadsPropertiesIsNone) {
  start();
  EXPECT_EQ(all(), DesktopTouchpads{});
}

TEST_F(X11TouchpadsTest, everyPropertyIsRead) {
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{1});
  desktop.set("libinput Click Method Enabled", std::vector<std::uint8_t>{1, 0});
  desktop.set("libinput Send Events Mode Enabled", std::vector<std::uint8_t>{0, 1});
  desktop.set("Device Product ID", std::vector<std::uint32_t>{76, 613});
  start();
  ASSERT_EQ(all().devices.size(), 1U);
  const TouchpadSettings& touchpad = all().of(76, 613);
  EXPECT_TRUE(touchpad.tapToClick && touchpad.enabled && touchpad.disabledWithMouse);
  EXPECT_EQ(touchpad.clickMethod, TouchpadClickMethod::buttonAreas);
  EXPECT_FALSE(all().devices[0].name.empty());
}

TEST_F(X11TouchpadsTest, aTouchpadThatSendsNothingIsOff) {
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{0});
  desktop.set("libinput Send Events Mode Enabled", std::vector<std::uint8_t>{1, 0});
  start();
  ASSERT_EQ(all().devices.size(), 1U);
  EXPECT_FALSE(all().devices[0].settings.enabled);
  EXPECT_FALSE(all().devices[0].settings.tapToClick);
}

TEST_F(X11TouchpadsTest, clickMethodsAreTwoSwitches) {
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{0});
  desktop.set("libinput Click Method Enabled", std::vector<std::uint8_t>{0, 1});
  start();
  EXPECT_EQ(all().devices.at(0).settings.clickMethod, TouchpadClickMethod::fingers);
  desktop.set("libinput Click Method Enabled", std::vector<std::uint8_t>{0, 0});
  serveUntil(
      [this] { return all().devices.at(0).settings.clickMethod == TouchpadClickMethod::none; });
}

TEST_F(X11TouchpadsTest, changesAreFollowed) {
  start();
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{0});
  serveUntil([this] { return all().devices.size() == 1; });
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{1});
  serveUntil([this] { return all().devices.at(0).settings.tapToClick; });
}

TEST_F(X11TouchpadsTest, aServerThatComesBackIsReadAgain) {
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{1});
  start();
  EXPECT_TRUE(all().devices.at(0).settings.tapToClick);
  server.restart();
  queue.runReady();
  EXPECT_TRUE(all().devices.at(0).settings.tapToClick) << "what was known stays meanwhile";
  serveUntil([this] { return all().devices.empty(); });
  const Desktop again(display);
  again.set("libinput Tapping Enabled", std::vector<std::uint8_t>{0});
  serveUntil([this] { return all().devices.size() == 1; });
}

TEST_F(X11TouchpadsTest, withoutAServerTheLibrarysDefaultsHold) {
  X11Touchpads absent(queue, queue, ":65000", [] { FAIL(); });
  EXPECT_EQ(absent.touchpads(), DesktopTouchpads{});
}

TEST_F(X11TouchpadsTest, theProgramsAnswersComeFromTheServer) {
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{1});
  desktop.set("Device Product ID", std::vector<std::uint32_t>{76, 613});
  DesktopPlaces places;
  places.kind = DesktopKind::xServer;
  places.display = display;
  LinuxSystemPreferences preferences(queue, queue, places, "Our Pad");
  const auto observation = preferences.observeChanges([this] { check(); });
  const auto tap = [&] {
    return preferences.read("com.apple.AppleMultitouchTrackpad", "TrackpadThreeFingerTapGesture");
  };
  EXPECT_EQ(tap(), Value(1));
  desktop.set("libinput Tapping Enabled", std::vector<std::uint8_t>{0});
  serveUntil([&] { return tap() == Value(0); });
}

}  // namespace
}  // namespace velotap
