#include "adapters/macos/runtime/mac_library_loader.hpp"
#include "adapters/macos/runtime/mach_clock.hpp"
#include "adapters/macos/shell/mac_url_opener.hpp"
#include "addresses_contract.hpp"
#include "clock_contract.hpp"
#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_runtime.hpp"
#include "libraries_contract.hpp"

namespace velotap::test {
namespace {

class MacClockWorld final : public ClockWorld {
 public:
  MacClockWorld() { time_.ticks = 1; }
  Clock& clock() override { return clock_; }
  void pass() override {
    ++time_.ticks;
    for (const auto now = clock_.date(); clock_.date() == now;) {
    }
  }

 private:
  FakeMachTime time_;
  MachClock clock_{time_.api()};
};

class MacLibrariesWorld final : public LibrariesWorld {
 public:
  MacLibrariesWorld() { linker_.libraries[library()][symbol()] = &code_; }
  LibraryLoader& loader() override { return loader_; }
  [[nodiscard]] const char* library() const override { return "/System/Library/Sample"; }
  [[nodiscard]] const char* symbol() const override { return "sampleAnswer"; }
  [[nodiscard]] const char* missingLibrary() override { return "/System/Library/Nothing"; }

 private:
  FakeLinker linker_;
  MacLibraryLoader loader_{linker_.api()};
  int code_ = 0;
};

class MacAddressesWorld final : public AddressesWorld {
 public:
  UrlOpener& urls() override { return urls_; }
  void havePrograms(bool have) override { workspace_.opens = have; }
  void serveUntil(const std::function<bool()>& done) override {
    EXPECT_TRUE(done()) << "this system answers at once";
  }
  std::vector<std::string> arrived() override { return workspace_.opened; }

 private:
  FakeWorkspace workspace_;
  MacUrlOpener urls_{workspace_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ClockContract, MacClockWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LibrariesContract, MacLibrariesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, AddressesContract, MacAddressesWorld);

}  // namespace
}  // namespace velotap::test
