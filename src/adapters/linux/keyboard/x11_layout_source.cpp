#include "adapters/linux/keyboard/x11_layout_source.hpp"

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "adapters/linux/keyboard/xcb_xkb.hpp"
#include "adapters/linux/session/session_environment.hpp"
#include "adapters/linux/session/socket_recovery.hpp"

namespace velotap {
namespace {

struct FreeEvent {
  void operator()(void* event) const noexcept { std::free(event); }
};
using Event = std::unique_ptr<xcb_generic_event_t, FreeEvent>;

/// Every event of the extension has its own kind where others have details.
struct AnyXkbEvent {
  std::uint8_t responseType;
  std::uint8_t xkbType;
};

struct StateRelease {
  void operator()(xkb_state* state) const noexcept { xkb_state_unref(state); }
};

constexpr std::uint8_t kSentByClient = 0x80;

}  // namespace

X11LayoutSource::X11LayoutSource(DescriptorLoop& loop, MainQueue& queue, std::string display)
    : loop_(loop),
      display_(std::move(display)),
      reconnection_(recoveryOf(loop, x11Socket(display_)), queue, [this] { return connect(); }) {}

X11LayoutSource::~X11LayoutSource() {
  disconnect();
}

void X11LayoutSource::start(std::function<void()> changed) {
  listenWith(std::move(changed));
  reconnection_.start();
}

bool X11LayoutSource::connect() {
  disconnect();
  connection_ = xcb_connect(display_.c_str(), nullptr);
  if (xcb_connection_has_error(connection_) != 0 ||
      xkb_x11_setup_xkb_extension(
          connection_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr) != 1) {
    return false;
  }
  keyboard_ = xkb_x11_get_core_keyboard_device_id(connection_);
  if (keyboard_ < 0 || !selectEvents()) return false;
  readKeymap();
  readable_ =
      loop_.watch(xcb_get_file_descriptor(connection_), DescriptorLoop::Interest::readable, [this] {
        serve();
        if (!readable_.active()) reconnection_.lost();
      });
  // What arrived while the keymap was read is in the library's queue and wakes nobody.
  serve();
  return readable_.active();
}

void X11LayoutSource::disconnect() {
  readable_.reset();
  if (connection_ != nullptr) xcb_disconnect(std::exchange(connection_, nullptr));
}

bool X11LayoutSource::selectEvents() const {
  constexpr std::uint16_t kKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
  constexpr std::uint16_t kGroup = XCB_XKB_STATE_PART_GROUP_STATE;
  constexpr std::uint16_t kMap =
      XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_VIRTUAL_MODS;
  constexpr std::uint16_t kKinds = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                   XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = kKeyboard;
  details.newKeyboardDetails = kKeyboard;
  details.affectState = kGroup;
  details.stateDetails = kGroup;
  const auto request =
      xcb_xkb_select_events_aux_checked(connection_, static_cast<xcb_xkb_device_spec_t>(keyboard_),
                                        kKinds, 0, 0, kMap, kMap, &details);
  const std::unique_ptr<xcb_generic_error_t, FreeEvent> error(
      xcb_request_check(connection_, request));
  return error == nullptr;
}

void X11LayoutSource::serve() {
  // A change of layouts comes as a burst of events, one for each keyboard and part.
  bool keymapChanged = false;
  bool groupChanged = false;
  while (const Event event{xcb_poll_for_event(connection_)}) {
    if ((event->response_type & ~kSentByClient) != firstEvent_) continue;
    const auto* any = reinterpret_cast<const AnyXkbEvent*>(event.get());
    if (any->xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY || any->xkbType == XCB_XKB_MAP_NOTIFY) {
      keymapChanged = true;
    } else if (any->xkbType == XCB_XKB_STATE_NOTIFY) {
      group_ = reinterpret_cast<const xcb_xkb_state_notify_event_t*>(event.get())->group;
      groupChanged = true;
    }
  }
  if (xcb_connection_has_error(connection_) != 0) {
    readable_.reset();
    return;
  }
  if (keymapChanged) {
    readKeymap();
    // Reading waited for answers and may have queued events meanwhile.
    return serve();
  }
  if (groupChanged) know(groupAt(groups_, group_));
}

void X11LayoutSource::readKeymap() {
  const XkbContext context = makeQuietContext();
  if (!context) return;
  const XkbKeymap keymap(xkb_x11_keymap_new_from_device(context.get(), connection_, keyboard_,
                                                        XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return;
  const std::unique_ptr<xkb_state, StateRelease> state(
      xkb_x11_state_new_from_device(keymap.get(), connection_, keyboard_));
  if (!state) return;
  groups_ = groupsOf(keymap.get());
  group_ = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
  know(groupAt(groups_, group_));
}

}  // namespace velotap
