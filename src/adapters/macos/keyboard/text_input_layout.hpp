// The keyboard layout over the text input services.
//
// Main thread only, as the services demand. The translator holds a copy of the layout's table, so
// it stays valid when another layout is selected.
#pragma once

#include "adapters/macos/core_foundation/core_foundation_api.hpp"
#include "adapters/macos/keyboard/text_input_api.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

class TextInputLayout final : public KeyboardLayout {
 public:
  TextInputLayout(const CoreFoundationApi& cf, const TextInputApi& input)
      : cf_(cf), input_(input) {}

  [[nodiscard]] std::unique_ptr<KeyTranslator> current() override;
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override;

 private:
  const CoreFoundationApi& cf_;
  const TextInputApi& input_;
};

}  // namespace velotap
