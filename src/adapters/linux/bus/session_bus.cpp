#include "adapters/linux/bus/session_bus.hpp"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>

#include "adapters/linux/bus/sd_bus_library.hpp"

namespace velotap {
namespace {

struct MessageRelease {
  const SdBusLibrary* library;
  void operator()(sd_bus_message* message) const noexcept {
    library->sd_bus_message_unref(message);
  }
};
using Message = std::unique_ptr<sd_bus_message, MessageRelease>;

constexpr SessionBus::Method kGetNameOwner{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                           "org.freedesktop.DBus", "GetNameOwner"};

constexpr SessionBus::Method kRequestName{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", "RequestName"};
constexpr std::uint32_t kDoNotQueue = 4;

// What a request for a name is answered with.
bool grantsName(std::uint32_t answer) noexcept {
  constexpr std::uint32_t kNowOwner = 1;
  constexpr std::uint32_t kAlreadyOwner = 4;
  return answer == kNowOwner || answer == kAlreadyOwner;
}

Message newCall(const SdBusLibrary& library, sd_bus* bus, const SessionBus::Method& method,
                const std::vector<std::string>& arguments) {
  sd_bus_message* raw = nullptr;
  if (library.sd_bus_message_new_method_call(bus, &raw, method.service, method.path,
                                             method.interface, method.member) < 0) {
    return Message(nullptr, {&library});
  }
  Message message(raw, {&library});
  library.sd_bus_message_set_auto_start(raw, 0);
  for (const std::string& argument : arguments) {
    if (library.sd_bus_message_append_basic(raw, 's', argument.c_str()) < 0)
      return {nullptr, {&library}};
  }
  return message;
}

template <typename Value>
std::optional<Value> readBasic(const SdBusLibrary* library, sd_bus_message* message, char type) {
  Value value{};
  if (message == nullptr || library->sd_bus_message_read_basic(message, type, &value) <= 0) {
    return std::nullopt;
  }
  return value;
}

/// Seconds until a moment of the monotonic clock in microseconds.
double secondsUntil(std::uint64_t moment) {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const double nowSeconds =
      static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
  return std::max(0.0, 1e-6 * static_cast<double>(moment) - nowSeconds);
}

}  // namespace

std::string BusMessage::text() {
  // The text belongs to the message.
  const auto text = readBasic<const char*>(library_, message_, SD_BUS_TYPE_STRING);
  return text && *text != nullptr ? std::string(*text) : std::string();
}

std::optional<std::int32_t> BusMessage::integer() {
  return readBasic<std::int32_t>(library_, message_, SD_BUS_TYPE_INT32);
}

std::optional<std::uint32_t> BusMessage::number() {
  return readBasic<std::uint32_t>(library_, message_, SD_BUS_TYPE_UINT32);
}

std::optional<bool> BusMessage::boolean() {
  // The library writes truth values as int.
  const auto value = readBasic<int>(library_, message_, SD_BUS_TYPE_BOOLEAN);
  return value ? std::optional(*value != 0) : std::nullopt;
}

std::string BusMessage::sender() const {
  if (message_ == nullptr) return {};
  const char* const sender = library_->sd_bus_message_get_sender(message_);
  return sender == nullptr ? std::string() : std::string(sender);
}

struct SessionBus::Slot {
  Slot(SessionBus& owner, Handler what) : bus(owner), handler(std::move(what)) {}
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;
  ~Slot() { library().sd_bus_slot_unref(slot); }

  [[nodiscard]] const SdBusLibrary& library() const noexcept { return *bus.library_; }

  SessionBus& bus;
  Handler handler;
  const char* interface = nullptr;  ///< of methods of ours
  const char* member = nullptr;
  sd_bus_slot* slot = nullptr;
};

struct SessionBus::Handlers {
  static int reply(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& slot = *static_cast<Slot*>(data);
    const SdBusLibrary& library = slot.library();
    const Handler handler = std::move(slot.handler);
    slot.bus.forget(&slot);
    const bool failed = library.sd_bus_message_is_method_error(message, nullptr) > 0;
    handler(failed ? BusMessage() : BusMessage(library, message));
    return 1;
  }
  static int signal(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& slot = *static_cast<Slot*>(data);
    // A copy: the handler may withdraw itself.
    const Handler handler = slot.handler;
    handler(BusMessage(slot.library(), message));
    return 0;
  }
  static int call(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& slot = *static_cast<Slot*>(data);
    const SdBusLibrary& library = slot.library();
    if (library.sd_bus_message_is_method_call(message, slot.interface, slot.member) <= 0) return 0;
    slot.handler(BusMessage(library, message));
    if (library.sd_bus_message_get_expect_reply(message) == 0) return 1;
    sd_bus_message* answer = nullptr;
    if (library.sd_bus_message_new_method_return(message, &answer) < 0) return 0;
    const Message owner(answer, {&library});
    library.sd_bus_send(nullptr, answer, nullptr);
    return 1;
  }
};

SessionBus::SessionBus(DescriptorLoop& loop, MainQueue& queue,
                       std::function<void(std::string)> lost)
    : loop_(loop), queue_(queue), lost_(std::move(lost)) {}

SessionBus::~SessionBus() {
  ready_.reset();
  if (timeout_ != nullptr) timeout_->cancel();
  slots_.clear();
  if (bus_ != nullptr) library_->sd_bus_close_unref(bus_);
}

std::optional<SessionBus::Refusal> SessionBus::refusalToOpen(const std::string& address) {
  library_ = SdBusLibrary::load();
  if (library_ == nullptr) return Refusal{false, "no library for the session bus is installed"};
  if (library_->sd_bus_new(&bus_) < 0 || library_->sd_bus_set_address(bus_, address.c_str()) < 0 ||
      library_->sd_bus_set_bus_client(bus_, 1) < 0 || library_->sd_bus_start(bus_) < 0) {
    return Refusal{true, "no session bus answers"};
  }
  arrange();
  return std::nullopt;
}

SessionBus::Slot& SessionBus::newSlot(Handler handler) {
  slots_.push_back(std::make_unique<Slot>(*this, std::move(handler)));
  return *slots_.back();
}

void SessionBus::forget(const Slot* slot) {
  std::erase_if(slots_, [slot](const auto& owned) { return owned.get() == slot; });
}

void SessionBus::call(const Method& method, const std::vector<std::string>& arguments,
                      Handler reply) {
  send(newCall(*library_, bus_, method, arguments).get(), std::move(reply));
}

void SessionBus::send(sd_bus_message* message, Handler reply) {
  Slot& slot = newSlot(std::move(reply));
  if (message != nullptr &&
      library_->sd_bus_call_async(bus_, &slot.slot, message, &Handlers::reply, &slot, 0) >= 0) {
    return arrange();
  }
  const Handler handler = std::move(slot.handler);
  forget(&slot);
  handler({});
}

void SessionBus::requestName(const std::string& name, std::function<void(bool granted)> settled) {
  const Message message = newCall(*library_, bus_, kRequestName, {name});
  if (message != nullptr) {
    library_->sd_bus_message_append_basic(message.get(), 'u', &kDoNotQueue);
  }
  send(message.get(), [settled = std::move(settled)](BusMessage reply) {
    const std::optional<std::uint32_t> answer = reply.number();
    settled(answer && grantsName(*answer));
  });
}

void SessionBus::tell(const Method& method, const std::vector<std::string>& arguments) {
  const Message message = newCall(*library_, bus_, method, arguments);
  if (message == nullptr) return;
  library_->sd_bus_message_set_expect_reply(message.get(), 0);
  library_->sd_bus_send(bus_, message.get(), nullptr);
  arrange();
}

Observation SessionBus::onSignal(const Method& signal, Handler received) {
  Slot& slot = newSlot(std::move(received));
  if (library_->sd_bus_match_signal_async(bus_, &slot.slot, signal.service, signal.path,
                                          signal.interface, signal.member, &Handlers::signal,
                                          nullptr, &slot) < 0) {
    forget(&slot);
    return {};
  }
  arrange();
  return Observation([this, slot = &slot, alive = std::weak_ptr<void>(alive_)] {
    if (!alive.expired()) forget(slot);
  });
}

bool SessionBus::onCall(const char* path, const char* interface, const char* member,
                        Handler received) {
  Slot& slot = newSlot(std::move(received));
  slot.interface = interface;
  slot.member = member;
  if (library_->sd_bus_add_object(bus_, &slot.slot, path, &Handlers::call, &slot) >= 0) return true;
  forget(&slot);
  return false;
}

void SessionBus::followOwner(const std::string& name,
                             std::function<void(std::string owner)> changed) {
  const std::string rule =
      "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
      "member='NameOwnerChanged',arg0='" +
      name + "'";
  Slot& slot = newSlot([changed](BusMessage message) {
    static_cast<void>(message.text());  // the name
    static_cast<void>(message.text());  // its owner until now
    changed(message.text());
  });
  if (library_->sd_bus_add_match_async(bus_, &slot.slot, rule.c_str(), &Handlers::signal, nullptr,
                                       &slot) < 0) {
    forget(&slot);
  }
  // Asked after the match, so that no change is missed in between.
  call(kGetNameOwner, {name},
       [changed = std::move(changed)](BusMessage message) { changed(message.text()); });
}

std::string SessionBus::uniqueName() const {
  // Asked before the connection stands, the library would wait for it.
  if (library_->sd_bus_is_ready(bus_) <= 0) return {};
  const char* name = nullptr;
  return library_->sd_bus_get_unique_name(bus_, &name) < 0 ? std::string() : std::string(name);
}

void SessionBus::serve() {
  int result = 0;
  do {
    result = library_->sd_bus_process(bus_, nullptr);
  } while (result > 0);
  if (result < 0) return lose("the session bus closed the connection");
  arrange();
}

void SessionBus::arrange() {
  const int events = library_->sd_bus_get_events(bus_);
  const int descriptor = library_->sd_bus_get_fd(bus_);
  if (events < 0 || descriptor < 0) return;  // found out by the processing that follows
  const bool wantsToWrite = (events & POLLOUT) != 0;
  if (!ready_.active() || wantsToWrite != wantsToWrite_) {
    wantsToWrite_ = wantsToWrite;
    ready_.reset();
    ready_ = loop_.watch(descriptor,
                         wantsToWrite ? DescriptorLoop::Interest::readableOrWritable
                                      : DescriptorLoop::Interest::readable,
                         [this] { serve(); });
  }
  if (timeout_ != nullptr) std::exchange(timeout_, nullptr)->cancel();
  std::uint64_t moment = 0;
  if (library_->sd_bus_get_timeout(bus_, &moment) < 0 || moment == UINT64_MAX) return;
  timeout_ = queue_.asyncAfter(secondsUntil(moment), [this] {
    timeout_ = nullptr;
    serve();
  });
}

void SessionBus::lose(std::string reason) {
  ready_.reset();
  if (timeout_ != nullptr) std::exchange(timeout_, nullptr)->cancel();
  if (const auto lost = std::exchange(lost_, nullptr)) lost(std::move(reason));
}

}  // namespace velotap
