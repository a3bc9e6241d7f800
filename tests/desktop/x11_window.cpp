// A window on an X server, for the desktop tests: x11_window INSTANCE CLASS [GTK-APPLICATION-ID]
//
// Prints a line for each of
//   mapped
//   active TIME      the window manager said that this window is the active one
// and obeys lines of standard input:
//   activate         asks the window manager for the focus
//   rename INSTANCE CLASS
// Ends when standard input or the server does. Times as in front_watch.cpp.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace {

struct Freed {
  void operator()(void* memory) const { std::free(memory); }
};

long long microseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000'000LL + now.tv_nsec / 1000;
}

class Window {
 public:
  Window() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) std::exit(2);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    window_ = xcb_generate_id(connection_);
    activeWindow_ = atom("_NET_ACTIVE_WINDOW");
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    const std::uint32_t own = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &own);
    const auto pid = static_cast<std::uint32_t>(getpid());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &pid);
  }

  void name(const std::string& instance, const std::string& windowClass) {
    const std::string both = instance + '\0' + windowClass + '\0';
    setText(XCB_ATOM_WM_CLASS, both);
  }
  void nameGtk(const std::string& id) { setText(atom("_GTK_APPLICATION_ID"), id); }
  void show() {
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
  }

  void activate() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window_;
    message.type = activeWindow_;
    message.data.data32[0] = 2;  // a pager's wish, which focus-stealing prevention lets through
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
  }

  /// False once the server is gone.
  bool serve() {
    while (
        const std::unique_ptr<xcb_generic_event_t, Freed> event{xcb_poll_for_event(connection_)}) {
      const int type = event->response_type & 0x7F;
      if (type == XCB_MAP_NOTIFY) std::puts("mapped");
      if (type == XCB_PROPERTY_NOTIFY) {
        const long long now = microseconds();
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if (change.window != root_ || change.atom != activeWindow_) continue;
        // A manager may say it twice: with no window in between, and then with ours.
        const bool active = isActive();
        if (active && !active_) std::printf("active\t%lld\n", now);
        active_ = active;
      }
    }
    return xcb_connection_has_error(connection_) == 0;
  }

  [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection_); }

 private:
  xcb_atom_t atom(const char* name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> reply{xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr)};
    return reply == nullptr ? XCB_NONE : reply->atom;
  }
  void setText(xcb_atom_t property, const std::string& text) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
    xcb_flush(connection_);
  }
  bool isActive() {
    const std::unique_ptr<xcb_get_property_reply_t, Freed> reply{xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, root_, activeWindow_, XCB_ATOM_WINDOW, 0, 1),
        nullptr)};
    return reply != nullptr && xcb_get_property_value_length(reply.get()) == 4 &&
           *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())) == window_;
  }

  xcb_connection_t* const connection_;
  xcb_window_t root_ = XCB_NONE;
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t activeWindow_ = XCB_NONE;
  bool active_ = false;
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) return 64;
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  // Lines are read one by one, so nothing must hide in a buffer when poll says "empty".
  std::cin.rdbuf()->pubsetbuf(nullptr, 0);
  std::ios::sync_with_stdio(true);
  std::setvbuf(stdin, nullptr, _IONBF, 0);
  Window window;
  window.name(arguments[1], arguments[2]);
  if (count > 3) window.nameGtk(arguments[3]);
  window.show();
  pollfd waits[] = {{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
                    {.fd = window.descriptor(), .events = POLLIN, .revents = 0}};
  while (window.serve() && poll(waits, 2, -1) > 0) {
    if (waits[0].revents == 0) continue;
    std::string line;
    if (!std::getline(std::cin, line)) return 0;
    std::istringstream words(line);
    std::string command;
    std::string instance;
    std::string windowClass;
    words >> command >> instance >> windowClass;
    if (command == "activate") window.activate();
    if (command == "rename") window.name(instance, windowClass);
  }
  return 0;
}
