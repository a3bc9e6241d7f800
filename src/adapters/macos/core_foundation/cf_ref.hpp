// A reference to a Core Foundation object that this program owns, released exactly once.
//
// Movable; empty by default. The table outlives the reference.
#pragma once

#include <utility>

#include "adapters/macos/core_foundation/core_foundation_api.hpp"

namespace velotap {

template <typename Ref>
class CfRef {
 public:
  CfRef() = default;
  /// Takes over a reference that Create or Copy returned; null gives an empty one.
  CfRef(const CoreFoundationApi& cf, Ref owned) : cf_(&cf), ref_(owned) {}
  /// Adds a reference of its own to a borrowed object, which is not null.
  [[nodiscard]] static CfRef retaining(const CoreFoundationApi& cf, Ref borrowed) {
    cf.CFRetain(borrowed);
    return CfRef(cf, borrowed);
  }
  CfRef(CfRef&& other) noexcept : cf_(other.cf_), ref_(std::exchange(other.ref_, nullptr)) {}
  CfRef& operator=(CfRef&& other) noexcept {
    if (this != &other) {
      reset();
      cf_ = other.cf_;
      ref_ = std::exchange(other.ref_, nullptr);
    }
    return *this;
  }
  CfRef(const CfRef&) = delete;
  CfRef& operator=(const CfRef&) = delete;
  ~CfRef() { reset(); }

  [[nodiscard]] Ref get() const noexcept { return ref_; }
  explicit operator bool() const noexcept { return ref_ != nullptr; }
  /// Gives the reference to somebody who will release it.
  [[nodiscard]] Ref release() noexcept { return std::exchange(ref_, nullptr); }
  void reset() noexcept {
    if (Ref ref = std::exchange(ref_, nullptr)) cf_->CFRelease(ref);
  }

 private:
  const CoreFoundationApi* cf_ = nullptr;
  Ref ref_ = nullptr;
};

}  // namespace velotap
