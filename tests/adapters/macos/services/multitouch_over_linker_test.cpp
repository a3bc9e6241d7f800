// The multitouch binding over the dynamic linker, with whatever the private framework may lack.
#include <gtest/gtest.h>

#include "adapters/macos/runtime/mac_library_loader.hpp"
#include "fakes/fake_runtime.hpp"
#include "input/multitouch_binding.hpp"

namespace velotap::test {
namespace {

constexpr const char* kFramework =
    "/System/Library/PrivateFrameworks/MultitouchSupport.framework/MultitouchSupport";

class MultitouchOverLinkerTest : public ::testing::Test {
 protected:
  // Addresses that nobody calls: being there is what counts.
  void bring(const char* missing = "") {
    for (const char* name : {"MTDeviceCreateList", "MTRegisterContactFrameCallback",
                             "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop",
                             "MTDeviceRelease", "MTDeviceIsBuiltIn", "MTDeviceGetFamilyID"}) {
      if (name != std::string_view(missing)) linker_.libraries[kFramework][name] = &there_;
    }
  }

  FakeLinker linker_;
  MacLibraryLoader loader_{linker_.api()};
  MT multitouch_{loader_};
  int there_ = 0;
};

TEST_F(MultitouchOverLinkerTest, aSystemWithoutTheFrameworkHasNoDevices) {
  EXPECT_FALSE(multitouch_.isAvailable());
  EXPECT_TRUE(multitouch_.deviceList().empty());
  EXPECT_EQ(multitouch_.describe(nullptr), "familyID=-1 builtIn=false");
}

TEST_F(MultitouchOverLinkerTest, aWholeFrameworkIsAvailableAndOpenedOnce) {
  bring();
  EXPECT_TRUE(multitouch_.isAvailable());
  EXPECT_TRUE(multitouch_.isAvailable());
  EXPECT_EQ(linker_.modes, std::vector<int>{2});
}

class MissingFunction : public MultitouchOverLinkerTest,
                        public ::testing::WithParamInterface<const char*> {};

TEST_P(MissingFunction, MakesItUseless) {
  bring(GetParam());
  EXPECT_FALSE(multitouch_.isAvailable());
}

INSTANTIATE_TEST_SUITE_P(Each, MissingFunction,
                         ::testing::Values("MTDeviceCreateList", "MTRegisterContactFrameCallback",
                                           "MTUnregisterContactFrameCallback", "MTDeviceStart",
                                           "MTDeviceStop", "MTDeviceRelease",
                                           "MTDeviceGetFamilyID"));

TEST_F(MultitouchOverLinkerTest, oneThatCannotTellWhatIsBuiltInIsUsable) {
  bring("MTDeviceIsBuiltIn");
  EXPECT_TRUE(multitouch_.isAvailable());
}

}  // namespace
}  // namespace velotap::test
