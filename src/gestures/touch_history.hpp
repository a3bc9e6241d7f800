// The touches behind the last outcomes: contacts only, in memory only, gone with the process.
//
// Fifty taps, fifty pinches and fifty clicks, each kind in a ring of its own so that somebody who
// taps all day still sees how the pinches went. Not thread-safe: the tap activity log guards it.
// Keeping a touch copies it into room taken beforehand and allocates nothing; reading allocates.
// Room that was never needed is never touched: it costs addresses and no memory.
#pragma once

#include <cstddef>
#include <vector>

#include "gestures/touch_replay.hpp"
#include "gestures/touch_trace.hpp"

namespace velotap {

/// A copy of what is kept, oldest first in each list.
struct KeptTouches {
  std::vector<KeptTap> taps;
  std::vector<KeptPinch> pinches;
  std::vector<KeptClick> clicks;
};

class TouchHistory {
 public:
  static constexpr std::size_t kCapacity = 50;

  /// A session with an outcome. One that is cut could not be judged again and is not kept.
  void keepTap(const TouchTrace& trace, double end, double duration, double sinceNatural);
  /// One that is cut is kept as far as it goes.
  void keepPinch(const TouchTrace& trace) { pinches_.keep(trace); }
  void keepClick(MTPoint position) { clicks_.keep({position}); }

  [[nodiscard]] KeptTouches touches() const;
  void clear();

 private:
  // The last elements that were kept.
  template <typename T>
  class Ring {
   public:
    Ring() { elements_.reserve(kCapacity); }
    void keep(const T& element) {
      if (elements_.size() < kCapacity) {
        elements_.push_back(element);
        return;
      }
      elements_[oldest_] = element;
      oldest_ = (oldest_ + 1) % kCapacity;
    }
    void clear() {
      elements_.clear();
      oldest_ = 0;
    }
    /// Oldest first.
    template <typename Use>
    void forEach(Use use) const {
      for (std::size_t i = 0; i < elements_.size(); ++i) {
        use(elements_[(oldest_ + i) % elements_.size()]);
      }
    }

   private:
    std::vector<T> elements_;
    std::size_t oldest_ = 0;
  };
  struct Tap {
    double end;
    double duration;
    double sinceNatural;
    TouchTrace trace;
  };

  Ring<Tap> taps_;
  Ring<TouchTrace> pinches_;
  Ring<KeptClick> clicks_;
};

}  // namespace velotap
