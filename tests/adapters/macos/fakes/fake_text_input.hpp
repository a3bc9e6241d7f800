// The text input services in a test: a current and an ASCII-capable layout, each with a table or
// without, and keys that type what the test says. Like the real ones they demand the main thread,
// which is the one that made the fake.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "adapters/macos/keyboard/text_input_api.hpp"
#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {

class FakeTextInput {
 public:
  explicit FakeTextInput(FakeCoreFoundation& cf);
  ~FakeTextInput();
  FakeTextInput(const FakeTextInput&) = delete;
  FakeTextInput& operator=(const FakeTextInput&) = delete;

  static constexpr const char* kChanged = "selected input source changed";

  [[nodiscard]] static FakeTextInput& current();
  [[nodiscard]] const TextInputApi& api() const { return api_; }

  /// The layouts' tables by their first byte; nothing: a source without a table; `sourceMissing`:
  /// no source at all.
  std::optional<std::string> currentTable = "US";
  std::optional<std::string> asciiTable = "ASCII";
  bool currentMissing = false;
  bool asciiMissing = false;
  bool tableIsNoData = false;

  struct Translation {
    OSStatus error = 0;
    std::u16string units;
    std::optional<UniCharCount> saysLength;
  };
  /// What a key of the layout with this table types.
  std::function<Translation(const std::string& table, UInt16 key)> translate;
  UInt8 keyboardType = 91;
  int translations = 0;

  void assertMainThread() const { EXPECT_EQ(std::this_thread::get_id(), mainThread_); }

 private:
  TISInputSourceRef source(const std::optional<std::string>& table) const;

  FakeCoreFoundation& cf_;
  TextInputApi api_{};
  CFStringRef property_, changed_;
  std::thread::id mainThread_ = std::this_thread::get_id();
};

}  // namespace velotap::test
