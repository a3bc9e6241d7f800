// Keyboard shortcuts that gestures post, and the key that types each on the layout in use.
//
// `resolveKeyCodes` is pure. `ShortcutKeyCodes` keeps the result current: it resolves on the main
// thread, outside its lock; `keyCode` may be called from any thread. Its lock comes last.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "base/lock_order.hpp"
#include "base/observer_list.hpp"
#include "platform/diagnostic_log.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

enum class SynthesizedShortcut { back, forward, zoomIn, zoomOut };
inline constexpr std::array kAllShortcuts = {
    SynthesizedShortcut::back, SynthesizedShortcut::forward, SynthesizedShortcut::zoomIn,
    SynthesizedShortcut::zoomOut};

/// One key code for each shortcut, indexed by its enumerator.
using ShortcutKeyCodeTable = std::array<std::uint16_t, kAllShortcuts.size()>;

/// The keys of the ANSI layout, for layouts that type none of a shortcut's characters.
[[nodiscard]] ShortcutKeyCodeTable fallbackKeyCodes() noexcept;

/// The key for each shortcut: its fallback key if that types the character, else the lowest code
/// that does. `translate` tells what a key types with the shortcut modifier held; it is called at
/// most once for each code.
[[nodiscard]] ShortcutKeyCodeTable resolveKeyCodes(
    const std::function<std::optional<std::string>(std::uint16_t)>& translate);

class ShortcutKeyCodes {
 public:
  ShortcutKeyCodes(KeyboardLayout& layout, DiagnosticLog& log);

  /// The codes of this process.
  [[nodiscard]] static ShortcutKeyCodes& shared();

  /// Resolves and follows the layout from now on. A second call only resolves again. Main thread.
  void start();
  /// Main thread.
  void refresh();
  /// Any thread; the fallback before `start`.
  [[nodiscard]] std::uint16_t keyCode(SynthesizedShortcut shortcut) const;

 private:
  KeyboardLayout& layout_;
  DiagnosticLog& log_;
  mutable OrderedMutex<LockRank::keyCodes> lock_;
  ShortcutKeyCodeTable keyCodes_ = fallbackKeyCodes();
  Observation observer_;
};

}  // namespace velotap
