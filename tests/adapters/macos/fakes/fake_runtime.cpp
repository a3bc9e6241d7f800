#include "fakes/fake_runtime.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace velotap::test {
namespace {

FakeMachTime* runningTime = nullptr;
FakeDispatch* runningDispatch = nullptr;
FakeLinker* runningLinker = nullptr;
FakeAccessibility* runningAccessibility = nullptr;

char mainQueue;

dispatch_queue_t theMainQueue() {
  return reinterpret_cast<dispatch_queue_t>(&mainQueue);
}

constexpr int kResolveNow = 2;

}  // namespace

FakeMachTime& FakeMachTime::current() {
  return *runningTime;
}

FakeMachTime::FakeMachTime() {
  runningTime = this;
  api_.mach_absolute_time = [] { return current().ticks; };
  api_.mach_timebase_info = [](mach_timebase_info_t info) {
    if (current().baseFails) return 5;
    *info = current().base;
    return 0;
  };
}

FakeMachTime::~FakeMachTime() {
  runningTime = nullptr;
}

FakeDispatch& FakeDispatch::current() {
  return *runningDispatch;
}

FakeDispatch::FakeDispatch() {
  runningDispatch = this;
  api_.dispatch_get_main_queue = [] { return theMainQueue(); };
  api_.dispatch_time = [](dispatch_time_t when, std::int64_t nanoseconds) -> dispatch_time_t {
    EXPECT_EQ(when, DISPATCH_TIME_NOW);
    EXPECT_GE(nanoseconds, 0);
    current().delays.push_back(nanoseconds);
    return current().now_ + static_cast<dispatch_time_t>(nanoseconds);
  };
  api_.dispatch_async_f = [](dispatch_queue_t queue, void* context, dispatch_function_t work) {
    EXPECT_EQ(queue, theMainQueue());
    current().entries_.push_back({0, context, work});
  };
  api_.dispatch_after_f = [](dispatch_time_t when, dispatch_queue_t queue, void* context,
                             dispatch_function_t work) {
    EXPECT_EQ(queue, theMainQueue());
    current().entries_.push_back({when, context, work});
  };
}

FakeDispatch::~FakeDispatch() {
  EXPECT_TRUE(entries_.empty()) << "work was never run, and what it holds leaks";
  runningDispatch = nullptr;
}

void FakeDispatch::runReady() {
  runDue(now_);
}

void FakeDispatch::advance(double seconds) {
  const dispatch_time_t until = now_ + static_cast<dispatch_time_t>(std::llround(seconds * 1e9));
  runDue(until);
  now_ = until;
}

void FakeDispatch::runDue(dispatch_time_t until) {
  while (true) {
    const auto first =
        std::min_element(entries_.begin(), entries_.end(),
                         [](const Entry& a, const Entry& b) { return a.due < b.due; });
    if (first == entries_.end() || first->due > until) return;
    const Entry entry = *first;
    entries_.erase(first);
    now_ = std::max(now_, entry.due);
    entry.work(entry.context);
  }
}

FakeLinker& FakeLinker::current() {
  return *runningLinker;
}

FakeLinker::FakeLinker() {
  runningLinker = this;
  api_.dlopen = [](const char* path, int mode) -> void* {
    current().modes.push_back(mode);
    EXPECT_EQ(mode, kResolveNow);
    const auto found = current().libraries.find(path);
    return found == current().libraries.end() ? nullptr : &found->second;
  };
  api_.dlsym = [](void* handle, const char* name) -> void* {
    const auto& symbols = *static_cast<std::map<std::string, void*>*>(handle);
    const auto found = symbols.find(name);
    return found == symbols.end() ? nullptr : found->second;
  };
}

FakeLinker::~FakeLinker() {
  runningLinker = nullptr;
}

FakeAccessibility& FakeAccessibility::current() {
  return *runningAccessibility;
}

FakeAccessibility::FakeAccessibility(FakeCoreFoundation& cf)
    : cf_(cf),
      prompt_(static_cast<CFStringRef>(
          static_cast<void*>(&cf.makeConstant(FakeKind::string, "prompt")))) {
  runningAccessibility = this;
  api_.kAXTrustedCheckOptionPrompt = &prompt_;
  // Any number but zero is true.
  api_.AXIsProcessTrusted = []() -> Boolean { return current().trusted ? 2 : 0; };
  api_.AXIsProcessTrustedWithOptions = [](CFDictionaryRef options) -> Boolean {
    FakeCoreFoundation& objects = current().cf_;
    for (const auto& [key, value] : objects.live(options, FakeKind::dictionary).entries) {
      EXPECT_EQ(key->text, "prompt");
      if (value->text == "true") ++current().prompts;
    }
    return 0;
  };
}

FakeAccessibility::~FakeAccessibility() {
  runningAccessibility = nullptr;
}

}  // namespace velotap::test
