#include "adapters/linux/workspace/gnome_front_source.hpp"

#include <utility>

#include "adapters/linux/workspace/session_bus.hpp"

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
    if (!bus_.open(busAddress_)) {
      return listener_.failed(SourceFailure::unreachable, "no session bus answers");
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
                             [this](sd_bus_message* message) { report(message); });
    // Asked after the signal was subscribed to, so that no change is missed in between.
    bus_.call({owner.c_str(), kObject, kInterface, "Front"}, {},
              [this, round = round_](sd_bus_message* reply) {
                if (round != round_) return;
                if (reply == nullptr) {
                  return listener_.dormant("the Velotap extension of GNOME Shell does not answer");
                }
                live_ = true;
                listener_.live();
                report(reply);
              });
  }

  void report(sd_bus_message* message) {
    if (!live_) return;
    int present = 0;
    const char* appId = nullptr;
    const char* windowClass = nullptr;
    const char* instance = nullptr;
    std::uint32_t pid = 0;
    if (sd_bus_message_read(message, "bsssu", &present, &appId, &windowClass, &instance, &pid) <
        0) {
      return;
    }
    if (present == 0) return listener_.front(std::nullopt);
    listener_.front(FrontWindow{.appId = appId,
                                .windowClass = windowClass,
                                .instance = instance,
                                .pid = static_cast<int>(pid)});
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
