#include "adapters/linux/session/socket_recovery.hpp"

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

std::unique_ptr<RecoverySignal> recoveryOf(DescriptorLoop& loop,
                                           const std::optional<std::string>& socket) {
  std::vector<std::string> sockets;
  if (socket) sockets.push_back(*socket);
  return std::make_unique<SocketRecovery>(loop, std::move(sockets));
}

}  // namespace velotap
