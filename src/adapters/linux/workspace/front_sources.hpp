// Makes the sources that a session's environment calls for.
#pragma once

#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/session/session_environment.hpp"
#include "adapters/linux/workspace/source_chooser.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// The sources worth trying, best first. On Wayland the X server is not among them, although there
/// usually is one: it knows the windows of X programs only, and would name the one that was in
/// front last.
[[nodiscard]] std::vector<FrontSourceKind> sourcesFor(const SessionEnvironment& session);

/// The candidates in the order of `sourcesFor`. Loop and queue must outlive what they make.
[[nodiscard]] std::vector<FrontSourceCandidate> frontSourceCandidates(
    const SessionEnvironment& session, DescriptorLoop& loop, MainQueue& queue);

}  // namespace velotap
