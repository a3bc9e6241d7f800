#include <xcb/randr.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

#include "adapters/linux/notices/display_watch.hpp"

namespace velotap {
namespace {

struct FreeDeleter {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
struct Disconnect {
  void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};

class X11Displays final : public DisplayWatch {
 public:
  X11Displays(DescriptorLoop& loop, const std::string& display, std::function<void()> reconfigured)
      : reconfigured_(std::move(reconfigured)), connection_(xcb_connect(display.c_str(), nullptr)) {
    if (failed()) return;
    const auto* const extension = xcb_get_extension_data(connection_.get(), &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) return;
    firstEvent_ = extension->first_event;
    for (auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())); roots.rem > 0;
         xcb_screen_next(&roots)) {
      xcb_randr_select_input(connection_.get(), roots.data->root,
                             XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                 XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                 XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    xcb_flush(connection_.get());
    ready_ = loop.watch(xcb_get_file_descriptor(connection_.get()),
                        DescriptorLoop::Interest::readable, [this] { serve(); });
    // An event may have been read while writing; the loop would not wake for it.
    serve();
  }

 private:
  using Event = std::unique_ptr<xcb_generic_event_t, FreeDeleter>;

  [[nodiscard]] bool failed() const { return xcb_connection_has_error(connection_.get()) != 0; }

  void serve() {
    bool changed = false;
    while (const Event event{xcb_poll_for_event(connection_.get())}) {
      const auto type = static_cast<std::uint8_t>(event->response_type & 0x7F);
      changed = changed || type == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                type == firstEvent_ + XCB_RANDR_NOTIFY;
    }
    if (failed()) ready_.reset();
    if (changed) reconfigured_();
  }

  const std::function<void()> reconfigured_;
  const std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  std::uint8_t firstEvent_ = 0;
  Observation ready_;
};

}  // namespace

std::unique_ptr<DisplayWatch> watchX11Displays(DescriptorLoop& loop, const std::string& display,
                                               std::function<void()> reconfigured) {
  return std::make_unique<X11Displays>(loop, display, std::move(reconfigured));
}

}  // namespace velotap
