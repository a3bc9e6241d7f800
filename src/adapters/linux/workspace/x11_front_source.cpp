#include "adapters/linux/workspace/x11_front_source.hpp"

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>
#include <vector>

#include "adapters/linux/workspace/x11_properties.hpp"

namespace velotap {
namespace {

struct FreeDeleter {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
template <typename T>
using Allocated = std::unique_ptr<T, FreeDeleter>;

/// Keeps a write to a connection that the server closed from ending the process: the library
/// writes without asking for an error instead of the signal.
class PipeSignalHeld {
 public:
  PipeSignalHeld() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    alreadyPending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~PipeSignalHeld() {
    constexpr timespec kNow{};
    if (!alreadyPending_) sigtimedwait(&pipe_, nullptr, &kNow);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  PipeSignalHeld(const PipeSignalHeld&) = delete;
  PipeSignalHeld& operator=(const PipeSignalHeld&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
  bool alreadyPending_ = false;
};

enum Atom { activeWindow, supported, supportingCheck, windowPid, gtkApplicationId, atomCount };
constexpr std::array<const char*, atomCount> kAtomNames{"_NET_ACTIVE_WINDOW", "_NET_SUPPORTED",
                                                        "_NET_SUPPORTING_WM_CHECK", "_NET_WM_PID",
                                                        "_GTK_APPLICATION_ID"};

/// Property reads are cut off here, in units of four bytes: identifiers are short, and the list of
/// supported hints has some hundred entries.
constexpr std::uint32_t kIdentifierLength = 256;
constexpr std::uint32_t kSupportedLength = 4096;

class X11FrontSource final : public FrontSource {
 public:
  X11FrontSource(DescriptorLoop& loop, std::string display)
      : loop_(loop), display_(std::move(display)) {}

  ~X11FrontSource() override {
    ready_.reset();
    const PipeSignalHeld held;
    if (connection_ != nullptr) xcb_disconnect(connection_);
  }

  void start(Listener listener) override {
    listener_ = std::move(listener);
    int screen = 0;
    connection_ = xcb_connect(display_.c_str(), &screen);
    if (xcb_connection_has_error(connection_) != 0) {
      return listener_.failed(SourceFailure::unreachable, "no X server answers");
    }
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    while (screen-- > 0 && roots.rem > 1) xcb_screen_next(&roots);
    root_ = roots.data->root;
    for (std::size_t i = 0; i < atomCount; ++i) {
      const auto cookie = xcb_intern_atom(
          connection_, 0, static_cast<std::uint16_t>(std::strlen(kAtomNames[i])), kAtomNames[i]);
      expect(cookie.sequence, [this, i](const void* reply) {
        if (reply != nullptr) atoms_[i] = static_cast<const xcb_intern_atom_reply_t*>(reply)->atom;
        if (i + 1 == atomCount) atomsKnown();
      });
    }
    ready_ = loop_.watch(xcb_get_file_descriptor(connection_), DescriptorLoop::Interest::readable,
                         [this] { serve(); });
    // An answer may have been read while writing; the loop would not wake for it.
    serve();
  }

 private:
  static constexpr const char* kNoManager = "no window manager runs on the X server";
  using Take = std::function<void(const void* reply)>;
  struct Expected {
    unsigned sequence = 0;
    Take take;  ///< with null when the server answered with an error
  };

  void serve() {
    do {
      while (const Allocated<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        handle(*event);
      }
      takeReplies();
      flush();
      // Writing may have read more, for which the loop would not wake us.
    } while (takeQueued());
    if (xcb_connection_has_error(connection_) != 0 && ready_.active()) {
      ready_.reset();
      expected_.clear();
      listener_.failed(SourceFailure::unreachable, "the X server closed the connection");
    }
  }

  bool takeQueued() {
    const Allocated<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_)};
    if (event == nullptr) return false;
    handle(*event);
    return true;
  }

  void flush() {
    const PipeSignalHeld held;
    xcb_flush(connection_);
  }

  void expect(unsigned sequence, Take take) { expected_.push_back({sequence, std::move(take)}); }

  /// Answers come in the order of the questions, so only the first can be due.
  void takeReplies() {
    while (!expected_.empty()) {
      void* reply = nullptr;
      xcb_generic_error_t* error = nullptr;
      if (xcb_poll_for_reply(connection_, expected_.front().sequence, &reply, &error) == 0) return;
      const Allocated<void> replyOwner{reply};
      const Allocated<xcb_generic_error_t> errorOwner{error};
      const Take take = std::move(expected_.front().take);
      expected_.erase(expected_.begin());
      take(reply);
    }
  }

  void handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7FU) {
      case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == root_)
          rootChanged(change.atom);
        else if (change.window == active_)
          activeWindowChanged(change.atom);
        break;
      }
      case XCB_DESTROY_NOTIFY:
        windowGone(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
      case XCB_UNMAP_NOTIFY:
        activeWindowHidden(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
        break;
      case XCB_MAP_NOTIFY:
        if (reinterpret_cast<const xcb_map_notify_event_t&>(event).window == active_) askActive();
        break;
      default:
        // Errors among them: a window that was asked about and is gone by now.
        break;
    }
  }

  void rootChanged(xcb_atom_t atom) {
    if (atom == atoms_[activeWindow]) askActive();
    if (atom == atoms_[supported] || atom == atoms_[supportingCheck]) askManager();
  }

  void windowGone(xcb_window_t window) {
    if (window == check_) {
      check_ = XCB_NONE;
      goDormant(kNoManager);
    }
    activeWindowHidden(window);
  }

  /// Some managers let the property name the last window when that one is gone.
  void activeWindowHidden(xcb_window_t window) {
    if (window != active_) return;
    ++question_;
    if (live_) listener_.front(std::nullopt);
  }

  void activeWindowChanged(xcb_atom_t atom) {
    // Some programs name their class only after the window is shown.
    if (atom == XCB_ATOM_WM_CLASS || atom == atoms_[gtkApplicationId]) askWindow();
  }

  void atomsKnown() {
    selectEvents(root_, XCB_EVENT_MASK_PROPERTY_CHANGE);
    askManager();
  }

  void selectEvents(xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
  }

  void askProperty(xcb_window_t window, xcb_atom_t property, std::uint32_t length,
                   std::function<void(const PropertyValue&)> take) {
    const auto cookie =
        xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, length);
    expect(cookie.sequence, [take = std::move(take)](const void* answer) {
      PropertyValue value;
      if (answer != nullptr) {
        const auto* reply = static_cast<const xcb_get_property_reply_t*>(answer);
        value.answered = true;
        value.format = reply->format;
        value.bytes =
            std::string_view(static_cast<const char*>(xcb_get_property_value(reply)),
                             static_cast<std::size_t>(xcb_get_property_value_length(reply)));
      }
      take(value);
    });
  }

  /// Is there a window manager, and does it keep the active window up to date? One that died
  /// leaves its properties behind, but not the window that they point to.
  void askManager() {
    askProperty(root_, atoms_[supportingCheck], 1, [this](const PropertyValue& value) {
      check_ = firstNumber(value).value_or(XCB_NONE);
      if (check_ == XCB_NONE) return goDormant(kNoManager);
      selectEvents(check_, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
      askProperty(check_, atoms_[supportingCheck], 1,
                  [this, asked = check_](const PropertyValue& own) {
                    if (asked == check_) managerJudged(own.answered);
                  });
    });
    askProperty(root_, atoms_[supported], kSupportedLength, [this](const PropertyValue& value) {
      supportsActive_ = containsNumber(value, atoms_[activeWindow]);
    });
  }

  void managerJudged(bool alive) {
    if (!alive) return goDormant(kNoManager);
    if (!supportsActive_) {
      return goDormant("the window manager does not tell which window is active");
    }
    if (live_) return;
    live_ = true;
    listener_.live();
    askActive();
  }

  void goDormant(const char* reason) {
    if (!live_ && reason == dormantReason_) return;
    live_ = false;
    dormantReason_ = reason;
    listener_.dormant(reason);
  }

  void askActive() {
    if (!live_) return;
    askProperty(root_, atoms_[activeWindow], 1, [this](const PropertyValue& value) {
      become(firstNumber(value).value_or(XCB_NONE));
    });
  }

  void become(xcb_window_t window) {
    if (window != active_) {
      if (active_ != XCB_NONE) selectEvents(active_, XCB_EVENT_MASK_NO_EVENT);
      active_ = window;
      if (active_ != XCB_NONE) {
        selectEvents(active_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
      }
    }
    if (active_ != XCB_NONE) return askWindow();
    ++question_;
    if (live_) listener_.front(std::nullopt);
  }

  void askWindow() {
    // The answers come in this order; the last one completes the description.
    const unsigned question = ++question_;
    askProperty(active_, atoms_[windowPid], 1, [this](const PropertyValue& value) {
      window_ = {};
      window_.pid = static_cast<int>(firstNumber(value).value_or(0));
    });
    askProperty(active_, atoms_[gtkApplicationId], kIdentifierLength,
                [this](const PropertyValue& value) { window_.appId = firstText(value); });
    askProperty(active_, XCB_ATOM_WM_CLASS, kIdentifierLength,
                [this, question](const PropertyValue& value) {
                  auto names = instanceAndClass(value);
                  window_.instance = std::move(names.first);
                  window_.windowClass = std::move(names.second);
                  if (question != question_ || !live_) return;
                  // A window that is gone before it could be asked is none.
                  listener_.front(value.answered ? std::optional(window_) : std::nullopt);
                });
  }

  DescriptorLoop& loop_;
  const std::string display_;
  Listener listener_;
  xcb_connection_t* connection_ = nullptr;
  Observation ready_;
  std::vector<Expected> expected_;
  std::array<xcb_atom_t, atomCount> atoms_{};
  xcb_window_t root_ = XCB_NONE;
  xcb_window_t check_ = XCB_NONE;  ///< lives as long as the window manager
  xcb_window_t active_ = XCB_NONE;
  FrontWindow window_;     ///< being described
  unsigned question_ = 0;  ///< answers to an earlier one are about an earlier window
  bool supportsActive_ = false;
  bool live_ = false;
  std::string_view dormantReason_;
};

}  // namespace

std::unique_ptr<FrontSource> makeX11FrontSource(DescriptorLoop& loop, std::string display) {
  return std::make_unique<X11FrontSource>(loop, std::move(display));
}

}  // namespace velotap
