#include "adapters/linux/keyboard/kde_layout_group.hpp"

#include <memory>
#include <utility>
#include <vector>

#include "adapters/linux/session/session_environment.hpp"
#include "adapters/linux/session/socket_recovery.hpp"

namespace velotap {
namespace {

constexpr const char* kService = "org.kde.keyboard";
constexpr const char* kPath = "/Layouts";
constexpr const char* kInterface = "org.kde.KeyboardLayouts";

}  // namespace

KdeLayoutGroup::KdeLayoutGroup(DescriptorLoop& loop, MainQueue& queue, std::string address,
                               std::function<void(std::uint32_t group)> changed)
    : loop_(loop),
      queue_(queue),
      address_(std::move(address)),
      changed_(std::move(changed)),
      reconnection_(recoveryOf(loop, busSocket(address_)), queue, [this] { return connect(); }) {}

bool KdeLayoutGroup::connect() {
  disconnect();
  bus_.emplace(loop_, queue_, [this](const std::string&) { reconnection_.lost(); });
  if (const auto refusal = bus_->refusalToOpen(address_)) {
    bus_.reset();
    // Without a library there is nothing to wait for.
    return !refusal->mayHelpLater;
  }
  bus_->followOwner(kService, [this](const std::string& owner) { follow(owner); });
  return true;
}

void KdeLayoutGroup::disconnect() {
  layoutSignal_.reset();
  listSignal_.reset();
  bus_.reset();
}

void KdeLayoutGroup::follow(const std::string& owner) {
  layoutSignal_.reset();
  listSignal_.reset();
  if (owner.empty()) return;
  layoutSignal_ = bus_->onSignal({owner.c_str(), kPath, kInterface, "layoutChanged"},
                                 [this](BusMessage message) { tell(message); });
  // With other layouts the same number means another one, and may not be told again.
  listSignal_ = bus_->onSignal({owner.c_str(), kPath, kInterface, "layoutListChanged"},
                               [this, owner](BusMessage) { ask(owner); });
  // Asked after the matches, so that no change is missed in between.
  ask(owner);
}

void KdeLayoutGroup::ask(const std::string& owner) {
  bus_->call({owner.c_str(), kPath, kInterface, "getLayout"}, {},
             [this](BusMessage message) { tell(message); });
}

void KdeLayoutGroup::tell(BusMessage message) {
  if (const auto group = message.number()) changed_(*group);
}

}  // namespace velotap
