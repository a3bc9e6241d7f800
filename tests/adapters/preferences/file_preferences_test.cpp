#include <unistd.h>

#include <cerrno>
#include <fstream>

#include "adapters/json/json_value.hpp"
#include "adapters/linux/preferences/file_preferences_storage.hpp"
#include "adapters/linux/runtime/posix_clock.hpp"
#include "adapters/linux/runtime/posix_main_queue.hpp"
#include "preferences_contract.hpp"
#include "support/temporary_folder.hpp"

namespace velotap::test {
namespace {

class FileWorld final : public PreferencesWorld {
 public:
  [[nodiscard]] PreferencesStorage& storage() override { return storage_; }
  void writeAsAnother(std::string_view domain, const ValueMap& values) override {
    std::string error;
    folder_.replace(std::string(domain) + ".json", settingsText(values, error).value());
    settle();
  }
  void setWritesFail(bool fail) override { writesFail_ = fail; }
  void settle() override { queue_.runReady(); }

 private:
  [[nodiscard]] FileCalls calls() {
    FileCalls calls = FileCalls::system();
    calls.write = [this](int fd, const void* data, std::size_t size) -> ssize_t {
      errno = ENOSPC;
      return writesFail_ ? -1 : ::write(fd, data, size);
    };
    return calls;
  }

  TemporaryFolder folder_;
  PosixClock clock_;
  PosixMainQueue queue_{clock_};
  bool writesFail_ = false;
  FilePreferencesStorage storage_{queue_, folder_.path().string(), [](const std::string&) {},
                                  calls()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Files, PreferencesContract, FileWorld);

}  // namespace
}  // namespace velotap::test
