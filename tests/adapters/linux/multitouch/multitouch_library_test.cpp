// The provider as the program meets it: opened by path, looked up by name.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <vector>

#include "platform/multitouch_abi.hpp"

namespace velotap::test {
namespace {

class MultitouchLibrary : public testing::Test {
 protected:
  MultitouchLibrary() : handle_(::dlopen(VELOTAP_PROVIDER_PATH, RTLD_NOW | RTLD_LOCAL)) {}
  template <typename Fn>
  Fn symbol(const char* name) {
    return reinterpret_cast<Fn>(::dlsym(handle_, name));
  }
  void* handle_;
};

TEST_F(MultitouchLibrary, exportsWhatTheBindingLooksUp) {
  ASSERT_NE(handle_, nullptr) << ::dlerror();
  for (const char* name : {"MTDeviceCreateList", "MTRegisterContactFrameCallback",
                           "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop",
                           "MTDeviceRelease", "MTDeviceIsBuiltIn", "MTDeviceGetFamilyID",
                           "CFArrayGetCount", "CFArrayGetValueAtIndex", "CFRetain", "CFRelease"}) {
    EXPECT_NE(::dlsym(handle_, name), nullptr) << name;
  }
}

// However many devices this machine has: the list can be walked, kept from and given back.
TEST_F(MultitouchLibrary, listsAreCountedReferences) {
  ASSERT_NE(handle_, nullptr);
  const auto list = symbol<MTDeviceCreateListFn>("MTDeviceCreateList")();
  ASSERT_NE(list, nullptr);
  const long count = symbol<CFArrayGetCountFn>("CFArrayGetCount")(list);
  const auto item = symbol<CFArrayGetValueAtIndexFn>("CFArrayGetValueAtIndex");
  EXPECT_EQ(item(list, -1), nullptr);
  EXPECT_EQ(item(list, count), nullptr);
  std::vector<const void*> kept;
  for (long i = 0; i < count; ++i) kept.push_back(symbol<CFRetainFn>("CFRetain")(item(list, i)));
  symbol<CFReleaseFn>("CFRelease")(list);
  for (const void* device : kept) {
    symbol<MTDeviceReleaseFn>("MTDeviceRelease")(const_cast<MTDevice>(device));
  }
}

}  // namespace
}  // namespace velotap::test
