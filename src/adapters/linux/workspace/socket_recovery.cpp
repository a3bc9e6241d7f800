#include "adapters/linux/workspace/socket_recovery.hpp"

#include <utility>

namespace velotap {

bool SocketRecovery::arm(std::function<void()> mayBeBack) {
  watch_ = std::make_unique<FolderWatch>(loop_, [this, mayBeBack = std::move(mayBeBack)] {
    // The watch may not be destroyed while its own function object runs.
    const auto told = mayBeBack;
    const auto spent = std::exchange(watch_, nullptr);
    told();
  });
  bool all = !sockets_.empty();
  for (const std::string& socket : sockets_) all &= watch_->addAppearance(socket);
  return all;
}

}  // namespace velotap
