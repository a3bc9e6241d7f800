// A connection to the session's message bus that is served by the main thread's loop.
//
// Main thread. Connecting, and every call, is asynchronous. Says once when the connection is lost
// or cannot be made; it must not be destroyed from inside any of its callbacks.
#pragma once

#include <systemd/sd-bus.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

class SessionBus {
 public:
  /// Reads a message; null where a call failed. Reading errors are for the reader to check.
  using Handler = std::function<void(sd_bus_message* message)>;

  SessionBus(DescriptorLoop& loop, MainQueue& queue, std::function<void(std::string)> lost);
  ~SessionBus();
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  /// Begins to connect. False when nobody listens at the address.
  [[nodiscard]] bool open(const std::string& address);

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
  /// Our address on the bus; empty until the connection stands.
  [[nodiscard]] std::string uniqueName() const;

 private:
  struct Slot;
  struct Handlers;
  [[nodiscard]] Slot& newSlot(Handler handler);
  void forget(const Slot* slot);
  void askOwner(const std::string& name, std::function<void(std::string)> changed);
  void serve();
  void arrange();
  void lose(std::string reason);

  DescriptorLoop& loop_;
  MainQueue& queue_;
  std::function<void(std::string)> lost_;
  sd_bus* bus_ = nullptr;
  bool wantsToWrite_ = false;
  Observation ready_;
  std::shared_ptr<DelayedWork> timeout_;
  std::vector<std::unique_ptr<Slot>> slots_;
  const std::shared_ptr<void> alive_ = std::make_shared<char>();  ///< observations may outlive this
};

/// The next argument of a message, which must be a text; empty when it is not.
[[nodiscard]] std::string readText(sd_bus_message* message);

}  // namespace velotap
