// A connection to the session's message bus that is served by the main thread's loop.
//
// Main thread. Connecting, and every call, is asynchronous. Says once when the connection is lost
// or cannot be made; it must not be destroyed from inside any of its callbacks.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "platform/main_queue.hpp"

struct sd_bus;
struct sd_bus_message;

namespace velotap {

struct SdBusLibrary;

/// A message while a handler reads it: arguments are taken one after the other. One that is not of
/// the type that is asked for reads as nothing.
class BusMessage {
 public:
  BusMessage(const SdBusLibrary& library, sd_bus_message* message)
      : library_(&library), message_(message) {}
  /// The answer to a call that failed.
  BusMessage() = default;

  [[nodiscard]] explicit operator bool() const noexcept { return message_ != nullptr; }
  [[nodiscard]] std::string text();
  [[nodiscard]] std::optional<std::int32_t> integer();
  [[nodiscard]] std::optional<std::uint32_t> number();
  [[nodiscard]] std::optional<bool> boolean();
  /// The sender's address on the bus.
  [[nodiscard]] std::string sender() const;

 private:
  const SdBusLibrary* library_ = nullptr;
  sd_bus_message* message_ = nullptr;
};

class SessionBus {
 public:
  using Handler = std::function<void(BusMessage message)>;

  SessionBus(DescriptorLoop& loop, MainQueue& queue, std::function<void(std::string)> lost);
  ~SessionBus();
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  struct Refusal {
    bool mayHelpLater;  ///< to ask again; not while no library is installed
    const char* reason;
  };
  /// Begins to connect. Nothing else may be called after a refusal.
  [[nodiscard]] std::optional<Refusal> refusalToOpen(const std::string& address);

  /// Follows who owns `name`: tells the present owner and then every change. An empty text means
  /// nobody.
  void followOwner(const std::string& name, std::function<void(std::string owner)> changed);

  struct Method {
    const char* service;
    const char* path;
    const char* interface;
    const char* member;
  };
  /// Calls with arguments that are all texts.
  void call(const Method& method, const std::vector<std::string>& arguments, Handler reply);
  /// As `call` without caring for the answer; written at once as far as the bus takes it, so that
  /// it may be the last thing said.
  void tell(const Method& method, const std::vector<std::string>& arguments);
  /// Signals that `signal.service` sends, until the observation is dropped. The service is named by
  /// its address (":1.7"), so that nobody else is heard.
  [[nodiscard]] Observation onSignal(const Method& signal, Handler received);
  /// Answers calls of one method of an object of ours; the reply is empty. False when refused.
  [[nodiscard]] bool onCall(const char* path, const char* interface, const char* member,
                            Handler received);
  /// Asks for a name of our own, by which others find us; whether it is ours now. It stays with
  /// whoever has it already.
  void requestName(const std::string& name, std::function<void(bool granted)> settled);
  /// Our address on the bus; empty until the connection stands.
  [[nodiscard]] std::string uniqueName() const;

 private:
  struct Slot;
  struct Handlers;
  [[nodiscard]] Slot& newSlot(Handler handler);
  void forget(const Slot* slot);
  void send(sd_bus_message* message, Handler reply);
  void askOwner(const std::string& name, std::function<void(std::string)> changed);
  void serve();
  void arrange();
  void lose(std::string reason);

  DescriptorLoop& loop_;
  MainQueue& queue_;
  std::function<void(std::string)> lost_;
  const SdBusLibrary* library_ = nullptr;
  sd_bus* bus_ = nullptr;
  bool wantsToWrite_ = false;
  Observation ready_;
  std::shared_ptr<DelayedWork> timeout_;
  std::vector<std::unique_ptr<Slot>> slots_;
  const std::shared_ptr<void> alive_ = std::make_shared<char>();  ///< observations may outlive this
};

}  // namespace velotap
