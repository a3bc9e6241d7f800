// Callbacks that somebody registered and may withdraw.
//
// Notifying, adding and removing are safe from any thread. Callbacks run on the notifying thread,
// without a lock held, so they may add and remove observers; one that is removed while a
// notification is under way may still be called once by it.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace velotap {

/// Withdraws its registration when destroyed. Movable; empty by default.
class Observation {
 public:
  Observation() = default;
  explicit Observation(std::function<void()> withdraw) : withdraw_(std::move(withdraw)) {}
  Observation(Observation&& other) noexcept : withdraw_(std::exchange(other.withdraw_, nullptr)) {}
  Observation& operator=(Observation&& other) noexcept {
    if (this != &other) {
      reset();
      withdraw_ = std::exchange(other.withdraw_, nullptr);
    }
    return *this;
  }
  Observation(const Observation&) = delete;
  Observation& operator=(const Observation&) = delete;
  ~Observation() { reset(); }
  void reset() {
    if (auto withdraw = std::exchange(withdraw_, nullptr)) withdraw();
  }
  [[nodiscard]] bool active() const noexcept { return withdraw_ != nullptr; }

 private:
  std::function<void()> withdraw_;
};

template <typename... Args>
class ObserverList {
 public:
  using Callback = std::function<void(Args...)>;

  /// The observation must not outlive the list's users; it may outlive the list itself.
  [[nodiscard]] Observation add(Callback callback) {
    auto entry = std::make_shared<Callback>(std::move(callback));
    const std::lock_guard guard(state_->lock);
    state_->entries.push_back(entry);
    return Observation([weak = std::weak_ptr(state_), entry] {
      if (auto state = weak.lock()) {
        const std::lock_guard inner(state->lock);
        std::erase(state->entries, entry);
      }
    });
  }

  [[nodiscard]] bool empty() const {
    const std::lock_guard guard(state_->lock);
    return state_->entries.empty();
  }

  void notify(Args... args) const {
    std::vector<std::shared_ptr<Callback>> entries;
    {
      const std::lock_guard guard(state_->lock);
      entries = state_->entries;
    }
    for (const auto& entry : entries) (*entry)(args...);
  }

 private:
  struct State {
    std::mutex lock;
    std::vector<std::shared_ptr<Callback>> entries;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace velotap
