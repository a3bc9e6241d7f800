#include <sys/stat.h>

#include <fstream>

#include "adapters/linux/runtime/dl_library_loader.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/services/desktop_url_opener.hpp"
#include "addresses_contract.hpp"
#include "clock_contract.hpp"
#include "libraries_contract.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap::test {
namespace {

class PosixClockWorld final : public ClockWorld {
 public:
  Clock& clock() override { return clock_; }
  void pass() override {
    const double uptime = clock_.uptime();
    const auto date = clock_.date();
    while (clock_.uptime() <= uptime || clock_.date() <= date) {
    }
  }

 private:
  PosixClock clock_;
};

class DlLibrariesWorld final : public LibrariesWorld {
 public:
  LibraryLoader& loader() override { return loader_; }
  [[nodiscard]] const char* library() const override { return LOADABLE_SAMPLE; }
  [[nodiscard]] const char* symbol() const override { return "loadableSampleAnswer"; }
  [[nodiscard]] const char* missingLibrary() override { return "/dev/null/nothing.so"; }

 private:
  DlLibraryLoader loader_;
};

// The person's programs are a script that writes down what it was given.
class DesktopAddressesWorld final : public AddressesWorld {
 public:
  DesktopAddressesWorld() {
    std::ofstream(path("opener")) << "#!/bin/sh\n[ -e '" << path("none") << "' ] && exit 1\n"
                                  << "printf '%s\\n' \"$1\" >> '" << path("arrived") << "'\n";
    ::chmod(path("opener").c_str(), 0700);
  }
  UrlOpener& urls() override { return urls_; }
  void havePrograms(bool have) override {
    if (have) {
      std::filesystem::remove(path("none"));
    } else {
      std::ofstream(path("none")).put('\n');
    }
  }
  void serveUntil(const std::function<bool()>& done) override {
    // Nobody tells of what a program wrote: it is looked for while the loop turns.
    std::function<void()> look = [&] {
      if (done()) {
        loop_.check();
      } else {
        loop_.queue.async(look);
      }
    };
    loop_.queue.async(look);
    loop_.serveUntil(done);
  }
  std::vector<std::string> arrived() override {
    std::ifstream in(path("arrived"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

 private:
  [[nodiscard]] std::string path(const char* name) const {
    return (folder_.path() / name).string();
  }

  TemporaryFolder folder_;
  ServedLoop loop_;
  DesktopUrlOpener urls_{loop_.queue, loop_.queue, "", {path("opener")}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ClockContract, PosixClockWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, LibrariesContract, DlLibrariesWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, AddressesContract, DesktopAddressesWorld);

}  // namespace
}  // namespace velotap::test
