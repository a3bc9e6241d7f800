#include <wayland-client.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "adapters/linux/notices/display_watch.hpp"
#include "adapters/linux/wayland/wayland_connection.hpp"

namespace velotap {
namespace {

// The first version that says when a description is complete and when a display is gone for good.
constexpr std::uint32_t kOutputVersion = 2;

class WaylandDisplays final : public DisplayWatch {
 public:
  WaylandDisplays(DescriptorLoop& loop, const std::string& socket,
                  std::function<void()> reconfigured)
      : reconfigured_(std::move(reconfigured)),
        connection_(
            loop,
            {.global = [this](wl_registry* registry, std::uint32_t name, const char* interface,
                              std::uint32_t version) { add(registry, name, interface, version); },
             .synced = [this] { synced(); },
             .lost = [](const std::string&) {},
             .removed = [this](std::uint32_t name) { remove(name); }}) {
    static_cast<void>(connection_.open(socket));
  }
  ~WaylandDisplays() override {
    for (const Output& output : outputs_) wl_output_destroy(output.proxy);
  }

 private:
  struct Output {
    std::uint32_t name;
    wl_output* proxy;
  };
  // The displays that are there at first describe themselves too: the first answer brings their
  // names, the second their descriptions. Only what comes later is news.
  enum class State { naming, describing, watching };

  void add(wl_registry* registry, std::uint32_t name, const char* interface,
           std::uint32_t version) {
    if (std::strcmp(interface, wl_output_interface.name) != 0 || version < kOutputVersion) return;
    static constexpr wl_output_listener kListener = {
        .geometry = [](void*, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                       std::int32_t, const char*, const char*, std::int32_t) {},
        .mode = [](void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
        .done = [](void* data, wl_output*) { ownerOf<WaylandDisplays>(data).changed(); },
        .scale = [](void*, wl_output*, std::int32_t) {},
        .name = [](void*, wl_output*, const char*) {},
        .description = [](void*, wl_output*, const char*) {}};
    auto* const proxy = static_cast<wl_output*>(
        wl_registry_bind(registry, name, &wl_output_interface, kOutputVersion));
    if (proxy == nullptr) return;
    wl_output_add_listener(proxy, &kListener, this);
    outputs_.push_back({name, proxy});
  }

  void remove(std::uint32_t name) {
    const auto found = std::find_if(outputs_.begin(), outputs_.end(),
                                    [name](const Output& output) { return output.name == name; });
    if (found == outputs_.end()) return;
    wl_output_destroy(found->proxy);
    outputs_.erase(found);
    changed();
  }

  void synced() {
    switch (state_) {
      case State::naming:
        state_ = State::describing;
        connection_.sync();
        return;
      case State::describing:
        state_ = State::watching;
        return;
      case State::watching:
        return;
    }
  }

  void changed() {
    if (state_ == State::watching) reconfigured_();
  }

  const std::function<void()> reconfigured_;
  State state_ = State::naming;
  std::vector<Output> outputs_;
  WaylandConnection connection_;
};

}  // namespace

std::unique_ptr<DisplayWatch> watchWaylandDisplays(DescriptorLoop& loop, const std::string& socket,
                                                   std::function<void()> reconfigured) {
  return std::make_unique<WaylandDisplays>(loop, socket, std::move(reconfigured));
}

}  // namespace velotap
