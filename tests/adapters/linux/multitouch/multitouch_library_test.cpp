// The provider as the program meets it: opened by path, looked up by name.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>
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

// By the linker's own table, so that a symbol too many is seen as well as one too few.
TEST_F(MultitouchLibrary, exportsWhatTheBindingLooksUpAndNothingElse) {
  ASSERT_NE(handle_, nullptr) << ::dlerror();
  FILE* listing = ::popen(VELOTAP_NM " -D --defined-only " VELOTAP_PROVIDER_PATH, "r");
  ASSERT_NE(listing, nullptr);
  std::set<std::string> exported;
  char address[64];
  char kind[8];
  char name[1024];
  while (std::fscanf(listing, "%63s %7s %1023s", address, kind, name) == 3) exported.insert(name);
  EXPECT_EQ(::pclose(listing), 0);
  EXPECT_EQ(exported,
            (std::set<std::string>{
                "MTDeviceCreateList", "MTRegisterContactFrameCallback",
                "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop",
                "MTDeviceRelease", "MTDeviceIsBuiltIn", "MTDeviceGetFamilyID", "CFArrayGetCount",
                "CFArrayGetValueAtIndex", "CFRetain", "CFRelease", "VelotapFeedEvents"}));
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
