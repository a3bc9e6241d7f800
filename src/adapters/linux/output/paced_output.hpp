// Writes clicks and key chords to the virtual pointer: at once where the spacing allows it, else
// from a thread of its own when their time has come.
//
// Posting is safe from any thread and does not wait: a press is written by the posting thread, its
// release 30 ms later by the output thread, which sleeps without a timer while nothing is due.
// Nothing allocates. A device that is lost is opened again for the next event, and reported once.
// Destroying the object releases what is down.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <thread>

#include "adapters/linux/keyboard/shortcut_chord.hpp"
#include "adapters/linux/output/click_pacer.hpp"
#include "adapters/linux/output/virtual_device.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "platform/clock.hpp"
#include "platform/diagnostic_log.hpp"

namespace velotap {

class PacedOutput {
 public:
  /// `report` tells a person about a device that cannot be opened or was lost; any thread.
  using Report = void (*)(const char* message, int error);

  PacedOutput(VirtualDevice& device, const Clock& clock, Report report);
  ~PacedOutput();
  PacedOutput(const PacedOutput&) = delete;
  PacedOutput& operator=(const PacedOutput&) = delete;

  void postMiddle(ClickPacer::Change change);
  /// Keys need no spacing: the whole chord goes out at once, each step in a frame of its own.
  void postChord(const KeyChord& chord, bool down);
  /// One frame that somebody else made up; false when it could not be written.
  bool postFrame(std::span<const input_event> frame);

 private:
  void run();
  void flushDueLocked();
  void armLocked();
  [[nodiscard]] bool emitLocked(std::span<const input_event> frame);
  bool emitKeyLocked(std::uint16_t code, bool down);
  void wake() const;

  VirtualDevice& device_;
  const Clock& clock_;
  Report report_;
  std::mutex lock_;
  ClickPacer pacer_;
  std::optional<double> armedFor_;  ///< what the timer is set to; nothing while it is not
  bool reported_ = false;
  std::atomic<bool> stopping_{false};
  Descriptor timer_;
  Descriptor wake_;
  std::thread thread_;
};

}  // namespace velotap
