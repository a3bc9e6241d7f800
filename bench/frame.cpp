// Nanoseconds and heap allocations per frame, the engine beside the floor.
//
// Times are for reading; `bench/count-instructions` gives the figures that repeat.

#include <benchmark/benchmark.h>

#include "allocation_counter.hpp"
#include "workload.hpp"

namespace velotap::bench {
namespace {

void reportAllocations(benchmark::State& state, std::uint64_t before) {
  state.counters["allocations"] = benchmark::Counter(
      static_cast<double>(allocationCount() - before), benchmark::Counter::kAvgIterations);
}

void engineFrame(benchmark::State& state) {
  EngineWorkload engine(kTrackpadFamily);
  auto touches = restingFingers(static_cast<int>(state.range(0)));
  engine.frame(touches);
  const std::uint64_t before = allocationCount();
  bool forth = false;
  for ([[maybe_unused]] auto _ : state) {
    wander(touches, forth = !forth);
    engine.frame(touches);
  }
  reportAllocations(state, before);
}

void floorFrame(benchmark::State& state) {
  Floor floor;
  auto touches = restingFingers(static_cast<int>(state.range(0)));
  const std::uint64_t before = allocationCount();
  bool forth = false;
  for ([[maybe_unused]] auto _ : state) {
    wander(touches, forth = !forth);
    floor.frame(touches.data(), static_cast<int>(touches.size()));
    benchmark::DoNotOptimize(floor.maxDrift());
  }
  reportAllocations(state, before);
}

void pinchFrame(benchmark::State& state) {
  EngineWorkload engine(kMagicMouseFamily);
  PinchFrames frames;
  for (int i = 0; i < 40; ++i) engine.frame(frames.next());
  const std::uint64_t before = allocationCount();
  for ([[maybe_unused]] auto _ : state) engine.frame(frames.next());
  reportAllocations(state, before);
  if (engine.posted().gestures == 0) state.SkipWithError("no pinch was recognised");
}

void wholeTap(benchmark::State& state) {
  EngineWorkload engine(kTrackpadFamily);
  const auto touches = restingFingers(3);
  const std::uint64_t before = allocationCount();
  for ([[maybe_unused]] auto _ : state) {
    for (int i = 0; i < 12; ++i) engine.frame(touches);
    engine.lift();
  }
  reportAllocations(state, before);
  if (engine.posted().mouse == 0) state.SkipWithError("no click was posted");
}

BENCHMARK(engineFrame)->Arg(0)->Arg(1)->Arg(3)->Arg(5)->Arg(11)->Arg(16);
BENCHMARK(floorFrame)->Arg(0)->Arg(1)->Arg(3)->Arg(5)->Arg(11)->Arg(16);
BENCHMARK(pinchFrame);
BENCHMARK(wholeTap);

}  // namespace
}  // namespace velotap::bench

BENCHMARK_MAIN();
