#include "adapters/linux/keyboard/layout_sources.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/linux/keyboard/configured_layout_source.hpp"
#include "adapters/linux/keyboard/gnome_layout_source.hpp"
#include "adapters/linux/keyboard/kde_layout_group.hpp"
#include "adapters/linux/keyboard/wayland_layout_source.hpp"
#include "adapters/linux/keyboard/x11_layout_source.hpp"

namespace velotap {
namespace {

constexpr std::array<std::string_view, 4> kGnomeShells = {"GNOME", "Budgie", "Unity", "Pantheon"};

/// A compositor's keymap with the group that KDE tells.
class KdeWaylandLayoutSource final : public LayoutSource {
 public:
  KdeWaylandLayoutSource(DescriptorLoop& loop, MainQueue& queue, std::string socket,
                         std::string bus)
      : keymap_(loop, queue, std::move(socket)),
        group_(loop, queue, std::move(bus),
               [this](std::uint32_t group) { keymap_.useGroup(group); }) {}

  void start(std::function<void()> changed) override {
    listenWith(std::move(changed));
    keymap_.start([this] { know(keymap_.keys()); });
    group_.start();
  }

 private:
  WaylandLayoutSource keymap_;
  KdeLayoutGroup group_;
};

}  // namespace

std::vector<LayoutSourceKind> layoutSourcesFor(const SessionEnvironment& session) {
  using enum LayoutSourceKind;
  if (isWayland(session)) {
    const bool gnome = std::ranges::any_of(
        kGnomeShells, [&](std::string_view shell) { return isDesktop(session, shell); });
    if (gnome) return {LayoutSourceKind::gnome, wayland, configured};
    if (isDesktop(session, "KDE")) return {waylandWithKde, configured};
    return {wayland, configured};
  }
  if (!session.display.empty()) return {x11, configured};
  return {configured};
}

std::vector<std::unique_ptr<LayoutSource>> makeLayoutSources(DescriptorLoop& loop, MainQueue& queue,
                                                             const SessionEnvironment& session,
                                                             const DconfPlaces& dconf) {
  const auto make = [&](LayoutSourceKind kind) -> std::unique_ptr<LayoutSource> {
    switch (kind) {
      case LayoutSourceKind::gnome:
        return std::make_unique<GnomeLayoutSource>(loop, dconf);
      case LayoutSourceKind::wayland:
        return std::make_unique<WaylandLayoutSource>(loop, queue, waylandSocket(session));
      case LayoutSourceKind::waylandWithKde:
        return std::make_unique<KdeWaylandLayoutSource>(loop, queue, waylandSocket(session),
                                                        session.busAddress);
      case LayoutSourceKind::x11:
        return std::make_unique<X11LayoutSource>(loop, queue, session.display);
      case LayoutSourceKind::configured:
        return std::make_unique<ConfiguredLayoutSource>(loop);
    }
    return nullptr;
  };
  std::vector<std::unique_ptr<LayoutSource>> sources;
  for (const LayoutSourceKind kind : layoutSourcesFor(session)) sources.push_back(make(kind));
  return sources;
}

}  // namespace velotap
