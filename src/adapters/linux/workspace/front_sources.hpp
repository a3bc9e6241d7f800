// Makes the sources that a session's environment calls for.
#pragma once

#include <vector>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/workspace/session_environment.hpp"
#include "adapters/linux/workspace/source_chooser.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// The candidates in the order of `sourcesFor`. Loop and queue must outlive what they make.
[[nodiscard]] std::vector<FrontSourceCandidate> frontSourceCandidates(
    const SessionEnvironment& session, DescriptorLoop& loop, MainQueue& queue);

}  // namespace velotap
