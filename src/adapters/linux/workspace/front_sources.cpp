#include "adapters/linux/workspace/front_sources.hpp"

#include "adapters/linux/workspace/gnome_front_source.hpp"
#include "adapters/linux/workspace/kwin_script_front_source.hpp"
#include "adapters/linux/workspace/plasma_front_source.hpp"
#include "adapters/linux/workspace/wlroots_front_source.hpp"
#include "adapters/linux/workspace/x11_front_source.hpp"

namespace velotap {
namespace {

std::unique_ptr<FrontSource> make(FrontSourceKind kind, const SessionEnvironment& session,
                                  DescriptorLoop& loop, MainQueue& queue) {
  switch (kind) {
    case FrontSourceKind::none:
      break;
    case FrontSourceKind::x11:
      return makeX11FrontSource(loop, session.display);
    case FrontSourceKind::wlroots:
      return makeWlrootsFrontSource(loop, waylandSocket(session));
    case FrontSourceKind::kdeWindowManagement:
      return makePlasmaFrontSource(loop, waylandSocket(session));
    case FrontSourceKind::kdeScript:
      return makeKwinScriptFrontSource(loop, queue, session.busAddress, session.runtimeFolder);
    case FrontSourceKind::gnomeExtension:
      return makeGnomeFrontSource(loop, queue, session.busAddress);
  }
  return nullptr;
}

}  // namespace

std::vector<FrontSourceKind> sourcesFor(const SessionEnvironment& session) {
  if (!isWayland(session)) {
    if (session.display.empty()) return {};
    return {FrontSourceKind::x11};
  }
  std::vector<FrontSourceKind> kinds{FrontSourceKind::wlroots,
                                     FrontSourceKind::kdeWindowManagement};
  if (session.busAddress.empty()) return kinds;
  const bool gnome = isDesktop(session, "GNOME");
  if (!gnome) kinds.push_back(FrontSourceKind::kdeScript);
  if (gnome || session.currentDesktop.empty()) kinds.push_back(FrontSourceKind::gnomeExtension);
  return kinds;
}

std::vector<FrontSourceCandidate> frontSourceCandidates(const SessionEnvironment& session,
                                                        DescriptorLoop& loop, MainQueue& queue) {
  std::vector<FrontSourceCandidate> candidates;
  for (const FrontSourceKind kind : sourcesFor(session)) {
    candidates.push_back(
        {.kind = kind, .make = [=, &loop, &queue] { return make(kind, session, loop, queue); }});
  }
  return candidates;
}

}  // namespace velotap
