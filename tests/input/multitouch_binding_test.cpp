#include "input/multitouch_binding.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "adapters/simulated/simulated_multitouch.hpp"

namespace velotap {
namespace {

using Calls = std::vector<std::string>;

void onFrame(MTDevice, const MTTouch*, std::int32_t, double, std::int32_t) {}

// Counts what is asked of a loader on its way to it.
class CountingLoader final : public LibraryLoader {
 public:
  explicit CountingLoader(LibraryLoader& loader) : loader_(loader) {}
  [[nodiscard]] void* open(const char* path) override {
    ++opens;
    return loader_.open(path);
  }
  [[nodiscard]] void* symbol(void* handle, const char* name) override {
    lookups.emplace_back(name);
    return loader_.symbol(handle, name);
  }
  [[nodiscard]] const char* multitouchLibraryPath() const override {
    return loader_.multitouchLibraryPath();
  }
  int opens = 0;
  Calls lookups;

 private:
  LibraryLoader& loader_;
};

class MultitouchBinding : public ::testing::Test {
 protected:
  MTDevice add(const std::string& name, std::optional<std::int32_t> family = 128,
               bool builtIn = false) {
    library_.add({.name = name, .family = family, .builtIn = builtIn});
    return library_.handle(name);
  }
  /// The binding of a device whose one reference is ours.
  MTDevice listed(MT& mt) {
    const auto devices = mt.deviceList();
    EXPECT_EQ(devices.size(), 1U);
    return devices.at(0);
  }
  ~MultitouchBinding() override { EXPECT_EQ(library_.faults(), Calls{}); }

  SimulatedMultitouch library_;
  CountingLoader loader_{library_};
};

TEST_F(MultitouchBinding, OpensTheLibraryOnceAndLooksEachSymbolUpOnce) {
  MT mt(loader_);
  EXPECT_EQ(loader_.opens, 0) << "nothing is resolved before it is needed";
  EXPECT_TRUE(mt.isAvailable());
  const auto lookups = loader_.lookups;
  EXPECT_TRUE(mt.isAvailable());
  EXPECT_EQ(loader_.opens, 1);
  EXPECT_EQ(loader_.lookups, lookups);
  EXPECT_EQ(lookups, (Calls{"MTDeviceCreateList", "MTRegisterContactFrameCallback",
                            "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop",
                            "MTDeviceRelease", "MTDeviceGetFamilyID"}));
}

TEST_F(MultitouchBinding, WithoutALibraryNothingIsAvailableAndNothingIsLookedUp) {
  library_.setMissing(true);
  const MTDevice pad = add("pad");
  MT mt(loader_);
  EXPECT_FALSE(mt.isAvailable());
  EXPECT_TRUE(mt.deviceList().empty());
  EXPECT_EQ(mt.describe(pad), "familyID=-1 builtIn=false");
  EXPECT_EQ(loader_.opens, 1);
  EXPECT_TRUE(loader_.lookups.empty());
}

class NeededSymbol : public MultitouchBinding, public ::testing::WithParamInterface<const char*> {};

TEST_P(NeededSymbol, IsNeededAndEndsTheSearch) {
  library_.removeSymbol(GetParam());
  MT mt(loader_);
  EXPECT_FALSE(mt.isAvailable());
  EXPECT_EQ(loader_.lookups.back(), GetParam()) << "the search stops at the first that is missing";
}

INSTANTIATE_TEST_SUITE_P(Each, NeededSymbol,
                         ::testing::Values("MTDeviceCreateList", "MTRegisterContactFrameCallback",
                                           "MTUnregisterContactFrameCallback", "MTDeviceStart",
                                           "MTDeviceStop", "MTDeviceRelease",
                                           "MTDeviceGetFamilyID"));

TEST_F(MultitouchBinding, BuiltInIsNotNeeded) {
  library_.removeSymbol("MTDeviceIsBuiltIn");
  add("pad", 128, true);
  MT mt(loader_);
  EXPECT_TRUE(mt.isAvailable());
  EXPECT_EQ(mt.describe(listed(mt)), "familyID=128 builtIn=false");
}

TEST_F(MultitouchBinding, DescribesADevice) {
  add("pad", 128, true);
  add("mouse", 112);
  add("silent", std::nullopt);
  add("negative", -7);
  MT mt(loader_);
  Calls descriptions;
  for (const MTDevice device : mt.deviceList()) descriptions.push_back(mt.describe(device));
  EXPECT_EQ(descriptions, (Calls{"familyID=128 builtIn=true", "familyID=112 builtIn=false",
                                 "familyID=-1 builtIn=false", "familyID=-7 builtIn=false"}));
}

TEST_F(MultitouchBinding, WithoutFamilyLookupTheFamilyIsUnknown) {
  library_.removeSymbol("MTDeviceGetFamilyID");
  add("mouse", 112);
  MT mt(loader_);
  EXPECT_EQ(mt.familyId(listed(mt)), -1);
}

class DeviceListForm : public MultitouchBinding,
                       public ::testing::WithParamInterface<SimulatedMultitouch::ListForm> {};

TEST_P(DeviceListForm, GivesDevicesInOrderWithOneReferenceEach) {
  const MTDevice pad = add("pad");
  const MTDevice mouse = add("mouse", 112);
  library_.setListForm(GetParam());
  MT mt(loader_);
  EXPECT_EQ(mt.deviceList(), (std::vector<MTDevice>{pad, mouse}));
  EXPECT_EQ(library_.heldReferences(), 2U) << "the list itself is given back";
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutNulls, DeviceListForm,
                         ::testing::Values(SimulatedMultitouch::ListForm::plain,
                                           SimulatedMultitouch::ListForm::withNullEntries),
                         [](const auto& form) {
                           return form.param == SimulatedMultitouch::ListForm::plain ? "plain"
                                                                                     : "withNulls";
                         });

TEST_F(MultitouchBinding, AFailingListIsEmpty) {
  add("pad");
  library_.setListForm(SimulatedMultitouch::ListForm::none);
  MT mt(loader_);
  EXPECT_TRUE(mt.deviceList().empty());
}

class ListSymbol : public NeededSymbol {};

TEST_P(ListSymbol, WithoutItAListThatCannotBeReadIsNotMade) {
  add("pad");
  library_.removeSymbol(GetParam());
  MT mt(loader_);
  EXPECT_TRUE(mt.deviceList().empty());
  EXPECT_EQ(library_.heldReferences(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, ListSymbol,
                         ::testing::Values("MTDeviceCreateList", "CFArrayGetCount",
                                           "CFArrayGetValueAtIndex", "CFRetain", "CFRelease"));

TEST_F(MultitouchBinding, StartsAndStopsADeviceInOrder) {
  add("pad");
  MT mt(loader_);
  const MTDevice pad = listed(mt);
  EXPECT_TRUE(mt.startDevice(pad, &onFrame));
  EXPECT_EQ(library_.takeCalls(), (Calls{"register pad", "start pad"}));
  EXPECT_EQ(library_.heldReferences(), 1U);
  EXPECT_TRUE(library_.deliver("pad", nullptr, 0));
  mt.stopDevice(pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), (Calls{"stop pad", "unregister pad", "release pad"}));
  EXPECT_EQ(library_.heldReferences(), 0U);
  EXPECT_FALSE(library_.deliver("pad", nullptr, 0));
}

TEST_F(MultitouchBinding, ADeviceThatDoesNotRegisterIsReleased) {
  library_.add({.name = "pad", .registers = false});
  MT mt(loader_);
  EXPECT_FALSE(mt.startDevice(listed(mt), &onFrame));
  EXPECT_EQ(library_.takeCalls(), (Calls{"register pad", "release pad"}));
  EXPECT_EQ(library_.heldReferences(), 0U);
}

TEST_F(MultitouchBinding, ADeviceThatDoesNotStartIsUnregisteredAndReleased) {
  library_.add({.name = "pad", .starts = false});
  MT mt(loader_);
  EXPECT_FALSE(mt.startDevice(listed(mt), &onFrame));
  EXPECT_EQ(library_.takeCalls(),
            (Calls{"register pad", "start pad", "unregister pad", "release pad"}));
  EXPECT_EQ(library_.heldReferences(), 0U);
}

class StartSymbol : public NeededSymbol {};

TEST_P(StartSymbol, WithoutItTheDeviceIsOnlyReleased) {
  add("pad");
  library_.removeSymbol(GetParam());
  MT mt(loader_);
  EXPECT_FALSE(mt.startDevice(listed(mt), &onFrame));
  EXPECT_EQ(library_.takeCalls(), Calls{"release pad"});
}

INSTANTIATE_TEST_SUITE_P(Each, StartSymbol,
                         ::testing::Values("MTRegisterContactFrameCallback",
                                           "MTUnregisterContactFrameCallback", "MTDeviceStart"));

TEST_F(MultitouchBinding, WithoutReleaseADeviceIsLeftAlone) {
  add("pad");
  library_.removeSymbol("MTDeviceRelease");
  MT mt(loader_);
  EXPECT_FALSE(mt.startDevice(listed(mt), &onFrame));
  EXPECT_EQ(library_.takeCalls(), Calls{});
}

TEST_F(MultitouchBinding, StoppingSkipsWhatTheLibraryLacks) {
  add("pad");
  MT whole(loader_);
  const MTDevice pad = listed(whole);
  ASSERT_TRUE(whole.startDevice(pad, &onFrame));
  library_.takeCalls();
  library_.removeSymbol("MTUnregisterContactFrameCallback");
  library_.removeSymbol("MTDeviceRelease");
  MT partial(loader_);
  partial.stopDevice(pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), Calls{"stop pad"});
}

TEST_F(MultitouchBinding, StoppingWithoutStopStillUnregistersAndReleases) {
  add("pad");
  library_.removeSymbol("MTDeviceStart");
  library_.removeSymbol("MTDeviceStop");
  MT mt(loader_);
  const MTDevice pad = listed(mt);
  ASSERT_TRUE(library_.registerCallback(pad, &onFrame));
  library_.takeCalls();
  mt.stopDevice(pad, &onFrame);
  EXPECT_EQ(library_.takeCalls(), (Calls{"unregister pad", "release pad"}));
}

TEST_F(MultitouchBinding, ManyThreadsResolveOnce) {
  MT mt(loader_);
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&mt] {
      for (int k = 0; k < 100; ++k) EXPECT_TRUE(mt.isAvailable());
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(loader_.opens, 1);
  EXPECT_EQ(loader_.lookups.size(), 7U);
}

}  // namespace
}  // namespace velotap
