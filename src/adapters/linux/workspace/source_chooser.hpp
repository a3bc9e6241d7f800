// Chooses the source that says which application is in front, and finds one again after the
// desktop went away.
//
// The candidates are tried in order. The first that is live wins and the rest are let go; one that
// is connected but has nobody to ask stays, and may win later. When none is left that could answer
// now, the status is `none` with the reasons, and the choice is made anew
//  - whenever the recovery signal says that a server may have come back, and
//  - after a growing pause, if somebody who should be there could not be reached: the gap between
//    a server's socket and its readiness has no event of its own. The pauses end after about half
//    a minute where a recovery signal is armed, so that a desktop that offers nothing costs
//    nothing.
// A source that keeps dying soon after it went live does not start the pauses afresh.
//
// Main thread. Sources are destroyed from the queue, never inside their own callbacks.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/session/recovery_signal.hpp"
#include "adapters/linux/workspace/front_source.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/main_queue.hpp"

namespace velotap {

/// Which source is live and, in words for a status display, what that means.
struct FrontSourceStatus {
  FrontSourceKind kind = FrontSourceKind::none;
  std::string text;
  friend bool operator==(const FrontSourceStatus&, const FrontSourceStatus&) = default;
};

struct FrontSourceCandidate {
  FrontSourceKind kind = FrontSourceKind::none;
  std::function<std::unique_ptr<FrontSource>()> make;
};

/// A candidate that has said nothing for this long is passed over, but kept.
inline constexpr double kAnswerLimit = 2;

class SourceChooser {
 public:
  struct Callbacks {
    std::function<void(const FrontSourceStatus&)> statusChanged;
    std::function<void(std::optional<FrontWindow>)> front;  ///< only while a source is live
  };

  SourceChooser(std::vector<FrontSourceCandidate> candidates, RecoverySignal& recovery,
                MainQueue& queue, Clock& clock, DiagnosticLog& log, Callbacks callbacks);
  ~SourceChooser();
  SourceChooser(const SourceChooser&) = delete;
  SourceChooser& operator=(const SourceChooser&) = delete;

  void start();
  [[nodiscard]] const FrontSourceStatus& status() const noexcept { return status_; }

 private:
  enum class Phase { idle, choosing, live, waiting };
  struct Attempt {
    std::size_t candidate = 0;
    std::unique_ptr<FrontSource> source;
    std::string reason;  ///< why it does not answer now; empty while it has not said
  };

  void chooseAnew();
  void tryNext();
  void tookLive(std::size_t candidate);
  void tookDormant(std::size_t candidate, std::string reason);
  void tookFailure(std::size_t candidate, SourceFailure failure, std::string reason);
  void passOver();
  void answerLimitPassed(std::size_t candidate);
  void wait();
  void scheduleRetry();
  void dropAttempts();
  void releaseLater(std::unique_ptr<FrontSource> source);
  [[nodiscard]] FrontSource::Listener listenerFor(std::size_t candidate);
  [[nodiscard]] Attempt* attemptOf(std::size_t candidate);
  [[nodiscard]] std::string reasons() const;
  void setStatus(FrontSourceStatus status);

  const std::vector<FrontSourceCandidate> candidates_;
  RecoverySignal& recovery_;
  MainQueue& queue_;
  Clock& clock_;
  DiagnosticLog& log_;
  const Callbacks callbacks_;

  Phase phase_ = Phase::idle;
  FrontSourceStatus status_;
  std::vector<Attempt> attempts_;  ///< connected or connecting; one, the live one, when live
  std::vector<std::unique_ptr<FrontSource>> retired_;  ///< destroyed in the queue's next turn
  std::vector<std::string> failures_;  ///< reasons of the candidates that gave up in this round
  std::size_t next_ = 0;               ///< candidate to try when the present one is passed over
  unsigned round_ = 0;                 ///< callbacks of an earlier round's sources are stale
  bool someoneUnreachable_ = false;
  bool watched_ = false;
  bool said_ = false;       ///< the first answer is worth a line, even if it is "none"
  std::size_t pauses_ = 0;  ///< how many pauses were made since a source last settled
  double liveSince_ = 0;
  std::shared_ptr<DelayedWork> retry_;
  std::shared_ptr<DelayedWork> answerLimit_;
  const std::shared_ptr<void> alive_ = std::make_shared<char>();  ///< tasks may outlive this
};

}  // namespace velotap
