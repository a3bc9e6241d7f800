// Tells that a server of this session may be back, by the appearance of its socket.
//
// Main thread. The socket appears a moment before its server listens, so whoever is told must be
// ready to try more than once.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/session/folder_watch.hpp"
#include "adapters/linux/session/recovery_signal.hpp"

namespace velotap {

class SocketRecovery final : public RecoverySignal {
 public:
  SocketRecovery(DescriptorLoop& loop, std::vector<std::string> sockets)
      : loop_(loop), sockets_(std::move(sockets)) {}

  /// True only when every socket is watched: one that is not could come back unseen.
  [[nodiscard]] bool arm(std::function<void()> mayBeBack) override;
  void disarm() override { watch_.reset(); }

 private:
  DescriptorLoop& loop_;
  const std::vector<std::string> sockets_;
  std::unique_ptr<FolderWatch> watch_;
};

/// The recovery of one server; one that admits that it watches nothing where no file tells.
[[nodiscard]] std::unique_ptr<RecoverySignal> recoveryOf(DescriptorLoop& loop,
                                                         const std::optional<std::string>& socket);

}  // namespace velotap
