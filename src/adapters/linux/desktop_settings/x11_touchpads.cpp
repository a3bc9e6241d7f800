#include "adapters/linux/desktop_settings/x11_touchpads.hpp"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/linux/session/session_environment.hpp"
#include "adapters/linux/session/socket_recovery.hpp"

namespace velotap {
namespace {

struct FreeReply {
  void operator()(void* reply) const noexcept { std::free(reply); }
};
template <typename Reply>
using Answer = std::unique_ptr<Reply, FreeReply>;

constexpr std::uint8_t kSentByClient = 0x80;
constexpr std::uint32_t kMostWords = 4;  // no property that we read is longer

}  // namespace

/// Asks one server for the properties of its devices.
struct X11Touchpads::Reader {
  xcb_connection_t* connection;

  /// None for a property that nobody ever set on any device.
  [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
    const Answer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }

  /// The numbers of a property; empty when the device does not have it.
  [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_input_device_id_t device,
                                                   std::string_view name) const {
    const xcb_atom_t property = atom(name);
    if (property == XCB_ATOM_NONE) return {};
    const Answer<xcb_input_xi_get_property_reply_t> reply(xcb_input_xi_get_property_reply(
        connection,
        xcb_input_xi_get_property(connection, device, 0, property, XCB_ATOM_ANY, 0, kMostWords),
        nullptr));
    if (!reply) return {};
    const auto* bytes = static_cast<const char*>(xcb_input_xi_get_property_items(reply.get()));
    std::vector<std::uint32_t> values(reply->num_items);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (reply->format == 8) {
        values[i] = static_cast<unsigned char>(bytes[i]);
      } else if (reply->format == 32) {
        std::memcpy(&values[i], bytes + i * sizeof(std::uint32_t), sizeof(std::uint32_t));
      }
    }
    return values;
  }

  /// Nothing when the device is not a touchpad.
  [[nodiscard]] std::optional<DeviceTouchpadSettings> touchpad(xcb_input_device_id_t device,
                                                               std::string_view name) const {
    const auto tapping = numbers(device, "libinput Tapping Enabled");
    if (tapping.empty()) return std::nullopt;
    DeviceTouchpadSettings touchpad;
    touchpad.name = name;
    touchpad.settings.tapToClick = tapping[0] != 0;
    const auto product = numbers(device, "Device Product ID");
    if (product.size() == 2) {
      touchpad.vendor = product[0];
      touchpad.product = product[1];
    }
    const auto click = numbers(device, "libinput Click Method Enabled");
    if (click.size() >= 2) {
      touchpad.settings.clickMethod = click[1] != 0   ? TouchpadClickMethod::fingers
                                      : click[0] != 0 ? TouchpadClickMethod::buttonAreas
                                                      : TouchpadClickMethod::none;
    }
    const auto sends = numbers(device, "libinput Send Events Mode Enabled");
    if (sends.size() == 2) {
      touchpad.settings.enabled = sends[0] == 0;
      touchpad.settings.disabledWithMouse = sends[1] != 0;
    }
    const auto enabled = numbers(device, "Device Enabled");
    if (!enabled.empty() && enabled[0] == 0) touchpad.settings.enabled = false;
    return touchpad;
  }
};

X11Touchpads::X11Touchpads(DescriptorLoop& loop, MainQueue& queue, std::string display,
                           std::function<void()> changed)
    : loop_(loop),
      display_(std::move(display)),
      changed_(std::move(changed)),
      reconnection_(recoveryOf(loop, x11Socket(display_)), queue, [this] { return connect(); }) {
  reconnection_.start();
  told_ = true;
}

X11Touchpads::~X11Touchpads() {
  disconnect();
}

bool X11Touchpads::connect() {
  disconnect();
  connection_ = xcb_connect(display_.c_str(), nullptr);
  if (xcb_connection_has_error(connection_) != 0 || !selectEvents()) return false;
  const DesktopTouchpads before = std::exchange(touchpads_, read());
  readable_ = loop_.watch(xcb_get_file_descriptor(connection_), DescriptorLoop::Interest::readable,
                          [this] { serve(); });
  // What arrived while reading is in the library's queue and wakes nobody.
  (void)refresh();
  if (xcb_connection_has_error(connection_) != 0) {
    touchpads_ = before;
    return false;
  }
  if (told_ && touchpads_ != before) changed_();
  return true;
}

void X11Touchpads::disconnect() {
  readable_.reset();
  if (connection_ != nullptr) xcb_disconnect(std::exchange(connection_, nullptr));
}

bool X11Touchpads::selectEvents() const {
  const Answer<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
      connection_, xcb_input_xi_query_version(connection_, 2, 2), nullptr));
  if (!version) return false;
  struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } request{.head = {.deviceid = XCB_INPUT_DEVICE_ALL, .mask_len = 1},
            .mask = XCB_INPUT_XI_EVENT_MASK_HIERARCHY | XCB_INPUT_XI_EVENT_MASK_PROPERTY};
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  const Answer<xcb_generic_error_t> error(xcb_request_check(
      connection_,
      xcb_input_xi_select_events_checked(connection_, screen->root, 1, &request.head)));
  return error == nullptr;
}

DesktopTouchpads X11Touchpads::read() const {
  DesktopTouchpads touchpads;
  const Answer<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
      connection_, xcb_input_xi_query_device(connection_, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!devices) return touchpads;
  const Reader reader{connection_};
  for (auto i = xcb_input_xi_query_device_infos_iterator(devices.get()); i.rem > 0;
       xcb_input_xi_device_info_next(&i)) {
    if (i.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER &&
        i.data->type != XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE) {
      continue;
    }
    const std::string_view name(xcb_input_xi_device_info_name(i.data), i.data->name_len);
    if (auto touchpad = reader.touchpad(i.data->deviceid, name)) {
      touchpads.devices.push_back(*std::move(touchpad));
    }
  }
  return touchpads;
}

/// Reads again as long as events say so; true when the settings are others now.
bool X11Touchpads::refresh() {
  const DesktopTouchpads before = touchpads_;
  bool something = true;
  while (std::exchange(something, false)) {
    // Plugging one touchpad in brings a dozen events. Reading waits for answers and may queue more.
    while (const Answer<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      something = something || (event->response_type & ~kSentByClient) == XCB_GE_GENERIC;
    }
    if (something) touchpads_ = read();
  }
  return touchpads_ != before;
}

void X11Touchpads::serve() {
  const DesktopTouchpads before = touchpads_;
  const bool others = refresh();
  if (xcb_connection_has_error(connection_) != 0) {
    // What was read while the server went down is not what it was set to.
    touchpads_ = before;
    readable_.reset();
    return reconnection_.lost();
  }
  if (others) changed_();
}

}  // namespace velotap
