#include "fakes/fake_quartz.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace velotap::test {
namespace {

FakeQuartz* running = nullptr;

FakeQuartz& fake() {
  return FakeQuartz::current();
}

FakeEvent& eventOf(CGEventRef event) {
  const FakeObject& object = fake().coreFoundation().live(event, FakeKind::event);
  return *static_cast<FakeEvent*>(object.extra.get());
}

CGEventRef makeEvent(FakeEvent event) {
  EXPECT_GT(fake().pools, 0) << "made outside a pool: a touch thread would leak";
  FakeObject& object = fake().coreFoundation().make(FakeKind::event);
  object.extra = std::make_shared<FakeEvent>(std::move(event));
  return static_cast<CGEventRef>(static_cast<void*>(&object));
}

FakeTap& tapOf(CFMachPortRef port) {
  static FakeTap nothing{};
  static_cast<void>(fake().coreFoundation().live(port, FakeKind::machPort));
  const auto found = std::find_if(fake().taps.begin(), fake().taps.end(),
                                  [port](const FakeTap& tap) { return tap.port == port; });
  if (found == fake().taps.end()) {
    ADD_FAILURE() << "no tap has this port";
    return nothing;
  }
  return *found;
}

// A reference to nothing: whoever looks into it fails the test.
CGEventRef noEvent() {
  static char nothing;
  return reinterpret_cast<CGEventRef>(&nothing);
}

// Releasing the port ends the tap; until then an invalid port is served no more.
bool served(const FakeTap& tap) {
  return tap.enabled && fake().coreFoundation().live(tap.port).text != "invalid";
}

}  // namespace

FakeQuartz& FakeQuartz::current() {
  return *running;
}

FakeQuartz::FakeQuartz(FakeCoreFoundation& cf) : cf_(cf) {
  running = this;
  fillEvents();
  fillFields();
  fillTaps();
  fillDisplays();
  // A pool is known by how many were open before it.
  runtime_.objc_autoreleasePoolPush = []() -> void* {
    fake().openPools_.push_back(std::make_unique<int>(fake().pools++));
    return fake().openPools_.back().get();
  };
  runtime_.objc_autoreleasePoolPop = [](void* pool) {
    ASSERT_FALSE(fake().openPools_.empty()) << "no pool is open";
    EXPECT_EQ(pool, fake().openPools_.back().get())
        << "pools are closed in the order in which they were opened";
    fake().openPools_.pop_back();
    --fake().pools;
  };
}

FakeQuartz::~FakeQuartz() {
  EXPECT_EQ(pools, 0) << "a pool was left open";
  EXPECT_TRUE(displays.empty()) << "a display callback was left registered";
  running = nullptr;
}

bool FakeQuartz::fails(const std::string& function) {
  const auto found = succeedOnly.find(function);
  if (found == succeedOnly.end()) return false;
  return found->second-- <= 0;
}

std::size_t FakeQuartz::installed(CGEventTapLocation location) const {
  return static_cast<std::size_t>(
      std::count_if(taps.begin(), taps.end(), [location](const FakeTap& tap) {
        return tap.location == location &&
               static_cast<const FakeObject*>(static_cast<const void*>(tap.port))->references > 0;
      }));
}

std::optional<FakeEvent> FakeQuartz::send(CGEventTapLocation location, FakeEvent event) {
  FakeObject& object = cf_.make(FakeKind::event);
  object.extra = std::make_shared<FakeEvent>(std::move(event));
  const auto native = static_cast<CGEventRef>(static_cast<void*>(&object));
  bool dropped = false;
  const std::vector<FakeTap> serving = taps;
  for (const FakeTap& tap : serving) {
    const bool gone = static_cast<const FakeObject*>(static_cast<void*>(tap.port))->references == 0;
    if (gone || tap.location != location || !served(tapOf(tap.port))) continue;
    EXPECT_FALSE(cf_.loopSources.empty());
    if ((tap.mask >> eventOf(native).type & 1U) == 0) continue;
    const CGEventRef answer = tap.callback(nullptr, eventOf(native).type, native, tap.context);
    EXPECT_TRUE(answer == native || answer == nullptr);
    if (answer == nullptr) {
      dropped = true;
      break;
    }
  }
  const FakeEvent passed = eventOf(native);
  cf_.release(object);  // the system's own reference, and the last one
  EXPECT_EQ(object.references, 0) << "a tap must neither keep nor release the system's event";
  if (dropped) return std::nullopt;
  return passed;
}

void FakeQuartz::disable(CGEventTapLocation location, CGEventType reason, bool revives) {
  const std::vector<FakeTap> serving = taps;
  for (const FakeTap& tap : serving) {
    if (static_cast<const FakeObject*>(static_cast<void*>(tap.port))->references == 0) continue;
    if (tap.location != location || !served(tapOf(tap.port))) continue;
    tapOf(tap.port).enabled = false;
    tapOf(tap.port).revives = revives;
    EXPECT_EQ(tap.callback(nullptr, reason, noEvent(), tap.context), noEvent());
  }
}

void FakeQuartz::reconfigure(CGDisplayChangeSummaryFlags flags) {
  const std::vector<Display> told = displays;
  for (const Display& display : told) display.callback(1, flags, display.context);
}

void FakeQuartz::fillEvents() {
  api_.CGEventCreate = [](CGEventSourceRef source) -> CGEventRef {
    EXPECT_EQ(source, nullptr);
    if (fake().fails("CGEventCreate")) return nullptr;
    return makeEvent({.location = fake().pointer});
  };
  api_.CGEventCreateMouseEvent = [](CGEventSourceRef source, CGEventType type, CGPoint location,
                                    CGMouseButton button) -> CGEventRef {
    EXPECT_EQ(source, nullptr);
    if (fake().fails("CGEventCreateMouseEvent")) return nullptr;
    return makeEvent({.type = type, .location = location, .button = button});
  };
  api_.CGEventCreateKeyboardEvent = [](CGEventSourceRef source, CGKeyCode key,
                                       bool down) -> CGEventRef {
    EXPECT_EQ(source, nullptr);
    if (fake().fails("CGEventCreateKeyboardEvent")) return nullptr;
    return makeEvent({.type = down ? kCGEventKeyDown : kCGEventKeyUp, .key = key, .down = down});
  };
  api_.CGEventPost = [](CGEventTapLocation location, CGEventRef event) {
    EXPECT_GT(fake().pools, 0);
    fake().posts.push_back({location, eventOf(event)});
  };
}

void FakeQuartz::fillFields() {
  api_.CGEventGetLocation = [](CGEventRef event) { return eventOf(event).location; };
  api_.CGEventSetLocation = [](CGEventRef event, CGPoint location) {
    eventOf(event).location = location;
  };
  api_.CGEventSetType = [](CGEventRef event, CGEventType type) { eventOf(event).type = type; };
  api_.CGEventSetFlags = [](CGEventRef event, CGEventFlags flags) { eventOf(event).flags = flags; };
  api_.CGEventGetIntegerValueField = [](CGEventRef event, CGEventField field) -> std::int64_t {
    const auto& integers = eventOf(event).integers;
    const auto found = integers.find(field);
    return found == integers.end() ? 0 : found->second;
  };
  api_.CGEventSetIntegerValueField = [](CGEventRef event, CGEventField field, std::int64_t value) {
    EXPECT_NE(eventOf(event).type, kCGEventNull) << "a field before the type is lost";
    eventOf(event).integers[field] = value;
    // The button of a left or right event is fixed by its type.
    if (field == kCGMouseEventButtonNumber && eventOf(event).type >= kCGEventOtherMouseDown) {
      eventOf(event).button = static_cast<CGMouseButton>(value);
    }
  };
  api_.CGEventSetDoubleValueField = [](CGEventRef event, CGEventField field, double value) {
    EXPECT_NE(eventOf(event).type, kCGEventNull) << "a field before the type is lost";
    eventOf(event).reals[field] = value;
  };
}

void FakeQuartz::fillTaps() {
  api_.CGEventTapCreate = [](CGEventTapLocation location, CGEventTapPlacement placement,
                             CGEventTapOptions options, CGEventMask mask,
                             CGEventTapCallBack callback, void* context) -> CFMachPortRef {
    if (location == kCGHIDEventTap ? fake().refuseHid : fake().refuseSession) return nullptr;
    FakeObject& port = fake().cf_.make(FakeKind::machPort);
    const auto reference = static_cast<CFMachPortRef>(static_cast<void*>(&port));
    fake().taps.insert(fake().taps.begin(), {location, placement, options, mask, callback, context,
                                             reference, true, true});
    return reference;
  };
  api_.CGEventTapEnable = [](CFMachPortRef port, bool enable) {
    FakeTap& tap = tapOf(port);
    tap.enabled = enable && tap.revives;
    fake().cf_.calls.emplace_back(enable ? "CGEventTapEnable true" : "CGEventTapEnable false");
  };
  api_.CGEventTapIsEnabled = [](CFMachPortRef port) { return tapOf(port).enabled; };
}

void FakeQuartz::fillDisplays() {
  api_.CGDisplayRegisterReconfigurationCallback = [](CGDisplayReconfigurationCallBack callback,
                                                     void* context) {
    if (fake().refuseDisplays) return kCGErrorFailure;
    fake().displays.push_back({callback, context});
    return kCGErrorSuccess;
  };
  api_.CGDisplayRemoveReconfigurationCallback = [](CGDisplayReconfigurationCallBack callback,
                                                   void* context) {
    const auto same = [callback, context](const Display& display) {
      return display.callback == callback && display.context == context;
    };
    EXPECT_EQ(std::erase_if(fake().displays, same), 1U)
        << "the pair must be the one that was registered";
    return kCGErrorSuccess;
  };
}

}  // namespace velotap::test
