// Runs one kind of frame a given number of times and nothing else, for counting instructions: the
// difference of two run lengths is free of start-up.
//
//   frame_loop engine|floor|pinch|tap CONTACTS FRAMES

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "workload.hpp"

namespace velotap::bench {
namespace {

void runEngine(int contacts, long frames) {
  EngineWorkload engine(kTrackpadFamily);
  const auto touches = restingFingers(contacts);
  for (long i = 0; i < frames; ++i) engine.frame(touches);
}

void runFloor(int contacts, long frames) {
  Floor floor;
  const auto touches = restingFingers(contacts);
  for (long i = 0; i < frames; ++i) floor.frame(touches.data(), contacts);
  if (floor.fingers() != contacts) std::abort();
}

void runPinch(long frames) {
  EngineWorkload engine(kMagicMouseFamily);
  PinchFrames pinch;
  for (long i = 0; i < frames; ++i) engine.frame(pinch.next());
}

// One frame down and one empty frame each: what a session costs from opening to the posted click.
void runTap(int contacts, long frames) {
  EngineWorkload engine(kTrackpadFamily);
  const auto touches = restingFingers(contacts);
  for (long i = 0; i < frames; ++i) {
    for (int spacing = 0; spacing < 12; ++spacing) engine.frame(touches);
    engine.lift();
  }
}

}  // namespace
}  // namespace velotap::bench

int main(int argc, char** argv) {
  using namespace velotap::bench;
  if (argc != 4) {
    std::fputs("usage: frame_loop engine|floor|pinch|tap CONTACTS FRAMES\n", stderr);
    return 2;
  }
  const std::string_view subject = argv[1];
  const int contacts = std::atoi(argv[2]);
  const long frames = std::atol(argv[3]);
  if (subject == "engine") {
    runEngine(contacts, frames);
  } else if (subject == "floor") {
    runFloor(contacts, frames);
  } else if (subject == "pinch") {
    runPinch(frames);
  } else if (subject == "tap") {
    runTap(contacts, frames);
  } else {
    std::fprintf(stderr, "frame_loop: unknown subject %s\n", argv[1]);
    return 2;
  }
  return 0;
}
