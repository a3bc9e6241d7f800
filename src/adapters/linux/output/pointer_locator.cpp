#include "adapters/linux/output/pointer_locator.hpp"

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cstdlib>
#include <mutex>
#include <utility>

namespace velotap {
namespace {

constexpr int kPatienceMilliseconds = 5;
constexpr double kRetryAfter = 10;

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && value[0] != '\0';
}

// Under Wayland the X server that serves old programs sees the pointer over their windows only.
bool sessionTells() {
  return isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY");
}

// One connection to the X server. One thread at a time.
class Connection {
 public:
  Connection() {
    int screen = 0;
    connection_ = xcb_connect(nullptr, &screen);
    if (broken()) return;
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    while (screen-- > 0 && roots.rem > 1) xcb_screen_next(&roots);
    root_ = roots.rem > 0 ? roots.data->root : XCB_NONE;
  }
  ~Connection() { xcb_disconnect(connection_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] bool broken() const { return xcb_connection_has_error(connection_) != 0; }

  [[nodiscard]] std::optional<Point> query() {
    const auto cookie = xcb_query_pointer(connection_, root_);
    xcb_flush(connection_);
    while (!broken()) {
      void* answer = nullptr;
      xcb_generic_error_t* error = nullptr;
      if (xcb_poll_for_reply(connection_, cookie.sequence, &answer, &error) != 0) {
        return take(answer, error);
      }
      pollfd waiting{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
      if (::poll(&waiting, 1, kPatienceMilliseconds) <= 0) break;
    }
    xcb_discard_reply(connection_, cookie.sequence);
    return std::nullopt;
  }

 private:
  static std::optional<Point> take(void* answer, xcb_generic_error_t* error) {
    std::optional<Point> location;
    if (const auto* reply = static_cast<xcb_query_pointer_reply_t*>(answer)) {
      location = Point{static_cast<double>(reply->root_x), static_cast<double>(reply->root_y)};
    }
    std::free(answer);
    std::free(error);
    return location;
  }

  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = XCB_NONE;
};

}  // namespace

struct PointerLocator::State {
  std::mutex lock;
  std::unique_ptr<Connection> connection;
  std::optional<Point> told;
  double retryAt = 0;

  // Main thread. The lock is free while the server is waited for.
  void connect() {
    auto fresh = std::make_unique<Connection>();
    if (fresh->broken()) return;
    const std::lock_guard guard(lock);
    connection = std::move(fresh);
  }
};

PointerLocator::PointerLocator(const Clock& clock, MainQueue& mainQueue)
    : clock_(clock), mainQueue_(mainQueue), state_(std::make_shared<State>()) {
  state_->retryAt = clock_.uptime() + kRetryAfter;
  if (sessionTells()) state_->connect();
}

PointerLocator::~PointerLocator() = default;

std::optional<Point> PointerLocator::location() {
  const std::lock_guard guard(state_->lock);
  auto& connection = state_->connection;
  if (connection && connection->broken()) connection.reset();
  if (connection) return connection->query();
  if (const double now = clock_.uptime(); now >= state_->retryAt && sessionTells()) {
    state_->retryAt = now + kRetryAfter;
    mainQueue_.async([weak = std::weak_ptr(state_)] {
      if (const auto state = weak.lock()) state->connect();
    });
  }
  return state_->told;
}

void PointerLocator::tell(std::optional<Point> overOwnWindow) {
  const std::lock_guard guard(state_->lock);
  state_->told = overOwnWindow;
}

}  // namespace velotap
