#include "adapters/linux/workspace/source_chooser.hpp"

#include <iterator>
#include <utility>

namespace velotap {
namespace {

void cancel(std::shared_ptr<DelayedWork>& work) {
  if (auto pending = std::exchange(work, nullptr)) pending->cancel();
}

std::string liveText(FrontSourceKind kind) {
  switch (kind) {
    case FrontSourceKind::none:
      break;
    case FrontSourceKind::x11:
      return "the window manager on the X server";
    case FrontSourceKind::wlroots:
      return "the compositor's list of windows";
    case FrontSourceKind::kdeWindowManagement:
      return "Plasma's window management";
    case FrontSourceKind::kdeScript:
      return "a script in KWin";
    case FrontSourceKind::gnomeExtension:
      return "the GNOME Shell extension";
  }
  return {};
}

}  // namespace

SourceChooser::SourceChooser(std::vector<FrontSourceCandidate> candidates, RecoverySignal& recovery,
                             MainQueue& queue, Clock& clock, DiagnosticLog& log,
                             Callbacks callbacks)
    : candidates_(std::move(candidates)),
      recovery_(recovery),
      queue_(queue),
      clock_(clock),
      log_(log),
      callbacks_(std::move(callbacks)),
      status_{.kind = FrontSourceKind::none, .text = "not asked yet"} {}

SourceChooser::~SourceChooser() {
  cancel(retry_);
  cancel(answerLimit_);
  recovery_.disarm();
  // First, so that nothing that the sources do while they are destroyed is heard.
  ++round_;
}

void SourceChooser::start() {
  if (phase_ == Phase::idle) chooseAnew();
}

void SourceChooser::chooseAnew() {
  dropAttempts();
  failures_.clear();
  someoneUnreachable_ = false;
  next_ = 0;
  phase_ = Phase::choosing;
  tryNext();
}

void SourceChooser::tryNext() {
  // A candidate that refuses at once comes back here from inside its start; the loop is that
  // recursion's end.
  if (next_ == candidates_.size()) return wait();
  const std::size_t candidate = next_++;
  attempts_.push_back(
      {.candidate = candidate, .source = candidates_[candidate].make(), .reason = {}});
  answerLimit_ = queue_.asyncAfter(kAnswerLimit, [this, candidate] {
    answerLimit_ = nullptr;
    answerLimitPassed(candidate);
  });
  attempts_.back().source->start(listenerFor(candidate));
}

FrontSource::Listener SourceChooser::listenerFor(std::size_t candidate) {
  const auto current = [=, this, round = round_] {
    return round == round_ && attemptOf(candidate) != nullptr;
  };
  return {
      .live =
          [=, this] {
            if (current()) tookLive(candidate);
          },
      .front =
          [=, this](std::optional<FrontWindow> window) {
            if (current() && phase_ == Phase::live) callbacks_.front(std::move(window));
          },
      .dormant =
          [=, this](std::string reason) {
            if (current()) tookDormant(candidate, std::move(reason));
          },
      .failed =
          [=, this](SourceFailure failure, std::string reason) {
            if (current()) tookFailure(candidate, failure, std::move(reason));
          },
  };
}

SourceChooser::Attempt* SourceChooser::attemptOf(std::size_t candidate) {
  for (Attempt& attempt : attempts_) {
    if (attempt.candidate == candidate) return &attempt;
  }
  return nullptr;
}

void SourceChooser::tookLive(std::size_t candidate) {
  if (phase_ == Phase::live) return;
  cancel(answerLimit_);
  cancel(retry_);
  failures_.clear();
  recovery_.disarm();
  for (Attempt& attempt : attempts_) {
    if (attempt.candidate != candidate) releaseLater(std::move(attempt.source));
  }
  std::erase_if(attempts_, [](const Attempt& attempt) { return attempt.source == nullptr; });
  phase_ = Phase::live;
  liveSince_ = clock_.uptime();
  const FrontSourceKind kind = candidates_[candidate].kind;
  setStatus({.kind = kind, .text = liveText(kind)});
}

void SourceChooser::tookDormant(std::size_t candidate, std::string reason) {
  Attempt* const attempt = attemptOf(candidate);
  const bool first = attempt->reason.empty();
  attempt->reason = std::move(reason);
  switch (phase_) {
    case Phase::idle:
      break;
    case Phase::choosing:
      if (first && candidate + 1 == next_) passOver();
      break;
    case Phase::live:
      wait();
      break;
    case Phase::waiting:
      setStatus({.kind = FrontSourceKind::none, .text = reasons()});
      break;
  }
}

void SourceChooser::passOver() {
  cancel(answerLimit_);
  tryNext();
}

void SourceChooser::answerLimitPassed(std::size_t candidate) {
  tookDormant(candidate,
              std::string(frontSourceName(candidates_[candidate].kind)) + " has not answered yet");
}

void SourceChooser::tookFailure(std::size_t candidate, SourceFailure failure, std::string reason) {
  Attempt* const attempt = attemptOf(candidate);
  const bool passedOver = !attempt->reason.empty();
  releaseLater(std::move(attempt->source));
  std::erase_if(attempts_, [](const Attempt& a) { return a.source == nullptr; });
  failures_.push_back(std::move(reason));
  if (failure == SourceFailure::unreachable) someoneUnreachable_ = true;
  switch (phase_) {
    case Phase::idle:
      break;
    case Phase::choosing:
      if (!passedOver && candidate + 1 == next_) passOver();
      break;
    case Phase::live:
      if (clock_.uptime() - liveSince_ >= kSettledAfter) pauses_ = 0;
      someoneUnreachable_ = true;
      wait();
      break;
    case Phase::waiting:
      wait();
      break;
  }
}

void SourceChooser::wait() {
  phase_ = Phase::waiting;
  watched_ = recovery_.arm([this] {
    pauses_ = 0;
    chooseAnew();
  });
  scheduleRetry();
  setStatus({.kind = FrontSourceKind::none, .text = reasons()});
}

void SourceChooser::scheduleRetry() {
  if (!someoneUnreachable_ || retry_ != nullptr) return;
  if (pauses_ == std::size(kRetryPauses) && watched_) return;
  const double pause =
      pauses_ < std::size(kRetryPauses) ? kRetryPauses[pauses_++] : kUnwatchedPause;
  retry_ = queue_.asyncAfter(pause, [this] {
    retry_ = nullptr;
    chooseAnew();
  });
}

void SourceChooser::dropAttempts() {
  ++round_;
  cancel(retry_);
  cancel(answerLimit_);
  for (Attempt& attempt : attempts_) releaseLater(std::move(attempt.source));
  attempts_.clear();
}

void SourceChooser::releaseLater(std::unique_ptr<FrontSource> source) {
  // The source may be the one that is calling.
  if (retired_.empty()) {
    queue_.async([this, alive = std::weak_ptr<void>(alive_)] {
      if (!alive.expired()) retired_.clear();
    });
  }
  retired_.push_back(std::move(source));
}

std::string SourceChooser::reasons() const {
  std::string text;
  const auto add = [&text](const std::string& reason) {
    if (reason.empty() || text.find(reason) != std::string::npos) return;
    if (!text.empty()) text += "; ";
    text += reason;
  };
  for (const std::string& reason : failures_) add(reason);
  for (const Attempt& attempt : attempts_) add(attempt.reason);
  return text.empty() ? "there is no desktop session" : text;
}

void SourceChooser::setStatus(FrontSourceStatus status) {
  if (status == status_) return;
  const bool worthALine = status.kind != status_.kind || !said_;
  status_ = std::move(status);
  said_ = true;
  if (worthALine && log_.enabled()) {
    log_.line(status_.kind == FrontSourceKind::none
                  ? "front application: unknown, " + status_.text
                  : std::string("front application: known from ") + frontSourceName(status_.kind) +
                        ", " + status_.text);
  }
  callbacks_.statusChanged(status_);
}

}  // namespace velotap
