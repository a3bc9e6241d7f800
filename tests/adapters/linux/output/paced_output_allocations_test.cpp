// Posting happens on the frame path, where nothing may allocate.

#include <gtest/gtest.h>

#include "adapters/linux/output/paced_output.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "allocation_counter.hpp"

namespace velotap {
namespace {

class SinkDevice final : public VirtualDevice {
 public:
  int open() override { return 0; }
  bool emit(std::span<const input_event>) override { return true; }
  void close() override {}
};

void ignore(const char*, int) {}

TEST(PacedOutputAllocations, PostingClicksAndChordsAllocatesNothing) {
  const PosixClock clock;
  SinkDevice device;
  PacedOutput output(device, clock, &ignore);
  KeyChord chord;
  chord.modifiers.push(KEY_LEFTALT);
  chord.key = KEY_LEFT;
  const auto before = bench::allocationCount();
  for (int i = 0; i < 100; ++i) {  // far more than fit, so that refusals are covered as well
    output.postMiddle(ClickPacer::Change::press);
    output.postMiddle(ClickPacer::Change::release);
    output.postChord(chord, true);
    output.postChord(chord, false);
  }
  EXPECT_EQ(bench::allocationCount(), before);
}

}  // namespace
}  // namespace velotap
