#include "adapters/macos/keyboard/text_input_layout.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "adapters/macos/core_foundation/cf_ref.hpp"
#include "adapters/macos/keyboard/utf16.hpp"

namespace velotap {
namespace {

// The service expects modifiers as the upper byte of an old event record: Command is its bit 0.
constexpr UInt32 kCommandHeld = 1;

// Aligned for whatever the table holds, which a vector of bytes need not be.
using LayoutTable = std::vector<std::max_align_t>;

class LayoutTranslator final : public KeyTranslator {
 public:
  LayoutTranslator(const TextInputApi& input, LayoutTable table)
      : input_(input), table_(std::move(table)), keyboardType_(input.LMGetKbdType()) {}

  [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override {
    std::array<UniChar, 4> units{};
    UInt32 deadKeyState = 0;
    UniCharCount length = 0;
    const auto* layout = reinterpret_cast<const UCKeyboardLayout*>(table_.data());
    const OSStatus error =
        input_.UCKeyTranslate(layout, keyCode, kUCKeyActionDown, kCommandHeld, keyboardType_, 0,
                              &deadKeyState, units.size(), &length, units.data());
    if (error != 0 || length == 0 || length > units.size()) return std::nullopt;
    std::array<char16_t, 4> characters{};
    std::copy_n(units.begin(), length, characters.begin());
    return utf8Of(std::span(characters).first(length));
  }

 private:
  const TextInputApi& input_;
  LayoutTable table_;
  UInt32 keyboardType_;
};

// Empty when the source has no table, as an input method of composed characters has none.
LayoutTable tableOf(const CoreFoundationApi& cf, const TextInputApi& input,
                    TISInputSourceRef source) {
  if (source == nullptr) return {};
  const void* property =
      input.TISGetInputSourceProperty(source, *input.kTISPropertyUnicodeKeyLayoutData);
  if (property == nullptr || cf.CFGetTypeID(property) != cf.CFDataGetTypeID()) return {};
  const auto data = static_cast<CFDataRef>(property);
  const auto size = static_cast<std::size_t>(cf.CFDataGetLength(data));
  LayoutTable table((size + sizeof(std::max_align_t) - 1) / sizeof(std::max_align_t));
  const UInt8* bytes = cf.CFDataGetBytePtr(data);
  std::copy_n(bytes, size, reinterpret_cast<UInt8*>(table.data()));
  return table;
}

// The center's registration, made with its own address.
class LayoutChanges {
 public:
  LayoutChanges(const CoreFoundationApi& cf, CFStringRef name, std::function<void()> changed)
      : cf_(cf), changed_(std::move(changed)) {
    cf_.CFNotificationCenterAddObserver(cf_.CFNotificationCenterGetDistributedCenter(), this,
                                        &notified, name, nullptr,
                                        CFNotificationSuspensionBehaviorDeliverImmediately);
  }
  ~LayoutChanges() {
    cf_.CFNotificationCenterRemoveEveryObserver(cf_.CFNotificationCenterGetDistributedCenter(),
                                                this);
  }
  LayoutChanges(const LayoutChanges&) = delete;
  LayoutChanges& operator=(const LayoutChanges&) = delete;

 private:
  static void notified(CFNotificationCenterRef, void* observer, CFNotificationName, const void*,
                       CFDictionaryRef) noexcept {
    // A copy: who is told may end the observation, and this object with it.
    const std::function<void()> changed = static_cast<LayoutChanges*>(observer)->changed_;
    changed();
  }

  const CoreFoundationApi& cf_;
  std::function<void()> changed_;
};

}  // namespace

std::unique_ptr<KeyTranslator> TextInputLayout::current() {
  for (const auto copySource : {input_.TISCopyCurrentKeyboardLayoutInputSource,
                                input_.TISCopyCurrentASCIICapableKeyboardLayoutInputSource}) {
    const CfRef<TISInputSourceRef> source(cf_, copySource());
    LayoutTable table = tableOf(cf_, input_, source.get());
    if (!table.empty()) return std::make_unique<LayoutTranslator>(input_, std::move(table));
  }
  return nullptr;
}

Observation TextInputLayout::observeChanges(std::function<void()> changed) {
  auto changes = std::make_shared<LayoutChanges>(
      cf_, *input_.kTISNotifySelectedKeyboardInputSourceChanged, std::move(changed));
  return Observation([changes]() mutable { changes.reset(); });
}

}  // namespace velotap
