#include "adapters/linux/workspace/gnome_front_source.hpp"

#include <utility>

#include "adapters/linux/bus/session_bus.hpp"

namespace velotap {
namespace {

constexpr const char* kService = "app.norwend.velotap.GnomeFront";
constexpr const char* kObject = "/app/norwend/velotap/GnomeFront";
constexpr const char* kInterface = "app.norwend.velotap.GnomeFront";

class GnomeFrontSource final : public FrontSource {
 public:
  GnomeFrontSource(DescriptorLoop& loop, MainQueue& queue, std::string busAddress)
      : busAddress_(std::move(busAddress)), bus_(loop, queue, [this](std::string reason) {
          listener_.failed(SourceFailure::unreachable, std::move(reason));
        }) {}

  void start(Listener listener) override {
    listener_ = std::move(listener);
    if (const auto refusal = bus_.refusalToOpen(busAddress_)) {
      return listener_.failed(
          refusal->mayHelpLater ? SourceFailure::unreachable : SourceFailure::absent,
          refusal->reason);
    }
    bus_.followOwner(kService, [this](const std::string& owner) { ownerChanged(owner); });
  }

 private:
  void ownerChanged(const std::string& owner) {
    ++round_;
    live_ = false;
    changes_.reset();
    if (owner.empty()) {
      return listener_.dormant("the Velotap extension of GNOME Shell does not run");
    }
    changes_ = bus_.onSignal({owner.c_str(), kObject, kInterface, "FrontChanged"},
                             [this](BusMessage message) { report(message); });
    // Asked after the signal was subscribed to, so that no change is missed in between.
    bus_.call({owner.c_str(), kObject, kInterface, "Front"}, {},
              [this, round = round_](BusMessage reply) {
                if (round != round_) return;
                if (!reply) {
                  return listener_.dormant("the Velotap extension of GNOME Shell does not answer");
                }
                live_ = true;
                listener_.live();
                report(reply);
              });
  }

  void report(BusMessage message) {
    if (!live_) return;
    const auto present = message.boolean();
    if (!present) return;  // not what our extension says
    if (!*present) return listener_.front(std::nullopt);
    FrontWindow window{
        .appId = message.text(), .windowClass = message.text(), .instance = message.text()};
    window.pid = static_cast<int>(message.number().value_or(0));
    listener_.front(std::move(window));
  }

  const std::string busAddress_;
  Listener listener_;
  SessionBus bus_;
  Observation changes_;
  unsigned round_ = 0;  ///< answers of an earlier extension are stale
  bool live_ = false;
};

}  // namespace

std::unique_ptr<FrontSource> makeGnomeFrontSource(DescriptorLoop& loop, MainQueue& queue,
                                                  std::string busAddress) {
  return std::make_unique<GnomeFrontSource>(loop, queue, std::move(busAddress));
}

}  // namespace velotap
