// Sources, a recovery signal and a chooser's surroundings that a test plays by hand.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/workspace/source_chooser.hpp"

namespace velotap::test {

/// The sources that a chooser made, by kind, as far as they still exist.
class FakeSources {
 public:
  class Source final : public FrontSource {
   public:
    Source(FakeSources& owner, FrontSourceKind kind) : owner_(owner), kind_(kind) {}
    ~Source() override {
      if (owner_.alive_[kind_] == this) owner_.alive_[kind_] = nullptr;
      ++owner_.destroyed;
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    void start(Listener listener) override {
      said = std::move(listener);
      owner_.alive_[kind_] = this;
      ++owner_.started[kind_];
      if (const auto found = owner_.atOnce.find(kind_); found != owner_.atOnce.end()) {
        found->second(*this);
      }
    }
    Listener said;

   private:
    FakeSources& owner_;
    FrontSourceKind kind_;
  };

  [[nodiscard]] FrontSourceCandidate candidate(FrontSourceKind kind) {
    return {.kind = kind, .make = [=, this] { return std::make_unique<Source>(*this, kind); }};
  }
  /// The newest source of a kind; null once it was destroyed.
  [[nodiscard]] Source* at(FrontSourceKind kind) { return alive_[kind]; }
  [[nodiscard]] FrontSource::Listener& operator[](FrontSourceKind kind) { return at(kind)->said; }

  std::map<FrontSourceKind, std::function<void(Source&)>> atOnce;  ///< what it does in `start`
  std::map<FrontSourceKind, int> started;
  int destroyed = 0;

 private:
  std::map<FrontSourceKind, Source*> alive_;
};

class FakeRecovery final : public RecoverySignal {
 public:
  [[nodiscard]] bool arm(std::function<void()> mayBeBack) override {
    told_ = std::move(mayBeBack);
    return watchable;
  }
  void disarm() override { told_ = nullptr; }
  [[nodiscard]] bool armed() const { return told_ != nullptr; }
  void tell() { std::exchange(told_, nullptr)(); }

  bool watchable = true;

 private:
  std::function<void()> told_;
};

}  // namespace velotap::test
