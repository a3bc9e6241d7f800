#include "input/multitouch_binding.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "support/fake_multitouch.hpp"

namespace velotap {
namespace {

using test::FakeMultitouch;
using Calls = std::vector<std::string>;

void onFrame(MTDevice, const MTTouch*, std::int32_t, double, std::int32_t) {}

class MultitouchBinding : public ::testing::Test {
 protected:
  FakeMultitouch library_;
};

TEST_F(MultitouchBinding, OpensTheLibraryOnceAndLooksEachSymbolUpOnce) {
  MT mt(library_);
  EXPECT_EQ(library_.opens, 0) << "nothing is resolved before it is needed";
  EXPECT_TRUE(mt.isAvailable());
  const auto lookups = library_.lookups;
  EXPECT_TRUE(mt.isAvailable());
  EXPECT_EQ(library_.opens, 1);
  EXPECT_EQ(library_.lookups, lookups);
  EXPECT_EQ(lookups, (Calls{"MTDeviceCreateList", "MTRegisterContactFrameCallback",
                            "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop",
                            "MTDeviceRelease", "MTDeviceGetFamilyID"}));
}

TEST_F(MultitouchBinding, WithoutALibraryNothingIsAvailableAndNothingIsLookedUp) {
  library_.libraryMissing = true;
  library_.add("pad", 128);
  MT mt(library_);
  EXPECT_FALSE(mt.isAvailable());
  EXPECT_TRUE(mt.deviceList().empty());
  EXPECT_EQ(mt.describe(&library_.devices[0]), "familyID=-1 builtIn=false");
  EXPECT_EQ(library_.opens, 1);
  EXPECT_TRUE(library_.lookups.empty());
}

TEST_F(MultitouchBinding, EachNeededSymbolIsNeededAndEndsTheSearch) {
  const Calls needed = {"MTDeviceCreateList",
                        "MTRegisterContactFrameCallback",
                        "MTUnregisterContactFrameCallback",
                        "MTDeviceStart",
                        "MTDeviceStop",
                        "MTDeviceRelease",
                        "MTDeviceGetFamilyID"};
  for (const std::string& name : needed) {
    library_.missingSymbols = {name};
    library_.lookups.clear();
    MT mt(library_);
    EXPECT_FALSE(mt.isAvailable()) << name;
    EXPECT_EQ(library_.lookups.back(), name) << "the search stops at the first that is missing";
  }
}

TEST_F(MultitouchBinding, BuiltInIsNotNeeded) {
  library_.missingSymbols = {"MTDeviceIsBuiltIn"};
  auto& pad = library_.add("pad", 128);
  pad.builtIn = true;
  MT mt(library_);
  EXPECT_TRUE(mt.isAvailable());
  EXPECT_EQ(mt.describe(&pad), "familyID=128 builtIn=false");
}

TEST_F(MultitouchBinding, DescribesADevice) {
  auto& pad = library_.add("pad", 128);
  pad.builtIn = true;
  auto& mouse = library_.add("mouse", 112);
  auto& silent = library_.add("silent", 0);
  silent.family = std::nullopt;
  auto& negative = library_.add("negative", -7);
  MT mt(library_);
  EXPECT_EQ(mt.describe(&pad), "familyID=128 builtIn=true");
  EXPECT_EQ(mt.describe(&mouse), "familyID=112 builtIn=false");
  EXPECT_EQ(mt.describe(&silent), "familyID=-1 builtIn=false");
  EXPECT_EQ(mt.describe(&negative), "familyID=-7 builtIn=false");
}

TEST_F(MultitouchBinding, WithoutFamilyLookupTheFamilyIsUnknown) {
  library_.missingSymbols = {"MTDeviceGetFamilyID"};
  auto& mouse = library_.add("mouse", 112);
  MT mt(library_);
  EXPECT_FALSE(mt.isAvailable());
  EXPECT_EQ(mt.familyId(&mouse), -1);
}

TEST_F(MultitouchBinding, ListsDevicesInOrderWithOneReferenceEach) {
  auto& pad = library_.add("pad", 128);
  auto& mouse = library_.add("mouse", 112);
  library_.nullEntries = true;
  MT mt(library_);
  EXPECT_EQ(mt.deviceList(), (std::vector<MTDevice>{&pad, &mouse}));
  EXPECT_EQ(pad.references, 1);
  EXPECT_EQ(mouse.references, 1);
  EXPECT_EQ(library_.openLists, 0) << "the list itself is given back";
}

TEST_F(MultitouchBinding, AFailingListIsEmpty) {
  library_.add("pad", 128);
  library_.listFails = true;
  MT mt(library_);
  EXPECT_TRUE(mt.deviceList().empty());
}

TEST_F(MultitouchBinding, AListThatCannotBeReadIsNotMade) {
  auto& pad = library_.add("pad", 128);
  for (const char* name : {"MTDeviceCreateList", "CFArrayGetCount", "CFArrayGetValueAtIndex",
                           "CFRetain", "CFRelease"}) {
    library_.missingSymbols = {name};
    MT mt(library_);
    EXPECT_TRUE(mt.deviceList().empty()) << name;
    EXPECT_EQ(library_.openLists, 0) << name;
    EXPECT_EQ(pad.references, 0) << name;
  }
}

TEST_F(MultitouchBinding, StartsADeviceInOrder) {
  auto& pad = library_.add("pad", 128);
  MT mt(library_);
  ASSERT_EQ(mt.deviceList().size(), 1U);
  EXPECT_TRUE(mt.startDevice(&pad, &onFrame));
  EXPECT_EQ(library_.takeCalls(), (Calls{"register pad", "start pad"}));
  EXPECT_EQ(pad.references, 1);
  EXPECT_EQ(pad.callback, &onFrame);
  mt.stopDevice(&pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), (Calls{"stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(pad.references, 0);
  EXPECT_EQ(pad.callback, nullptr);
}

TEST_F(MultitouchBinding, ADeviceThatDoesNotRegisterIsReleased) {
  auto& pad = library_.add("pad", 128);
  pad.registers = false;
  MT mt(library_);
  ASSERT_EQ(mt.deviceList().size(), 1U);
  EXPECT_FALSE(mt.startDevice(&pad, &onFrame));
  EXPECT_EQ(library_.takeCalls(), (Calls{"register pad", "release pad"}));
  EXPECT_EQ(pad.references, 0);
}

TEST_F(MultitouchBinding, ADeviceThatDoesNotStartIsUnregisteredAndReleased) {
  auto& pad = library_.add("pad", 128);
  pad.starts = false;
  MT mt(library_);
  ASSERT_EQ(mt.deviceList().size(), 1U);
  EXPECT_FALSE(mt.startDevice(&pad, &onFrame));
  EXPECT_EQ(library_.takeCalls(),
            (Calls{"register pad", "start pad", "unregister pad", "release pad"}));
  EXPECT_EQ(pad.references, 0);
}

TEST_F(MultitouchBinding, WithoutAFunctionForStartingTheDeviceIsOnlyReleased) {
  auto& pad = library_.add("pad", 128);
  for (const char* name :
       {"MTRegisterContactFrameCallback", "MTUnregisterContactFrameCallback", "MTDeviceStart"}) {
    library_.missingSymbols = {name};
    MT mt(library_);
    ASSERT_EQ(mt.deviceList().size(), 1U);
    EXPECT_FALSE(mt.startDevice(&pad, &onFrame)) << name;
    EXPECT_EQ(library_.takeCalls(), (Calls{"release pad"})) << name;
  }
}

TEST_F(MultitouchBinding, WithoutReleaseADeviceIsLeftAlone) {
  auto& pad = library_.add("pad", 128);
  library_.missingSymbols = {"MTDeviceRelease"};
  MT mt(library_);
  EXPECT_FALSE(mt.startDevice(&pad, &onFrame));
  EXPECT_TRUE(library_.takeCalls().empty());
}

TEST_F(MultitouchBinding, StoppingSkipsFunctionsThatAreMissing) {
  auto& pad = library_.add("pad", 128);
  library_.missingSymbols = {"MTDeviceStop"};
  MT withoutStop(library_);
  withoutStop.stopDevice(&pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), (Calls{"unregister pad", "release pad"}));
  library_.missingSymbols = {"MTUnregisterContactFrameCallback", "MTDeviceRelease"};
  MT withoutRest(library_);
  withoutRest.stopDevice(&pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), (Calls{"stop pad"}));
}

TEST_F(MultitouchBinding, ManyThreadsResolveOnce) {
  MT mt(library_);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&mt] {
      for (int k = 0; k < 100; ++k) EXPECT_TRUE(mt.isAvailable());
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(library_.opens, 1);
  EXPECT_EQ(library_.lookups.size(), 7U);
}

}  // namespace
}  // namespace velotap
