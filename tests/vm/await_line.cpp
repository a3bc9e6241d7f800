// Waits until a file has a line that matches a regular expression, woken by the kernel when the
// file grows:
//
//   await_line FILE REGEX [SECONDS]
//
// The file need not exist yet; its folder must. Prints the matching line. Exit status 1 when the
// time (10 s) is up, 2 for bad usage.
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <string>

#include "guest_io.hpp"

namespace velotap::vm {
namespace {

constexpr std::int64_t kDefaultSeconds = 10;

std::optional<std::string> find(const std::filesystem::path& file, const std::regex& pattern) {
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    if (std::regex_search(line, pattern)) return line;
  }
  return std::nullopt;
}

int await(const std::filesystem::path& file, const char* expression, std::int64_t seconds) {
  const std::regex pattern(expression);
  const Descriptor notices(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  // The folder, not the file: it tells of both the file's creation and its growth.
  const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
  if (inotify_add_watch(notices.get(), folder.c_str(), IN_CREATE | IN_MODIFY) < 0) {
    std::perror("await_line");
    return 2;
  }
  const std::int64_t limit = monotonicNanoseconds() + seconds * kNanosecondsPerSecond;
  for (;;) {
    if (const auto line = find(file, pattern)) {
      std::puts(line->c_str());
      return 0;
    }
    const std::int64_t left = limit - monotonicNanoseconds();
    if (left <= 0) {
      std::fprintf(stderr, "await_line: no line like '%s' in %s after %lld s\n", expression,
                   file.c_str(), static_cast<long long>(seconds));
      return 1;
    }
    pollfd polled{notices.get(), POLLIN, 0};
    poll(&polled, 1, static_cast<int>(left / kNanosecondsPerMillisecond) + 1);
    std::array<char, 4096> dropped{};
    while (read(notices.get(), dropped.data(), dropped.size()) > 0) {
    }
  }
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  const long seconds = argc == 4 ? std::strtol(argv[3], nullptr, 10)
                                 : static_cast<long>(velotap::vm::kDefaultSeconds);
  if (argc < 3 || argc > 4 || seconds <= 0) {
    std::fputs("usage: await_line FILE REGEX [SECONDS]\n", stderr);
    return 2;
  }
  try {
    return velotap::vm::await(argv[1], argv[2], seconds);
  } catch (const std::regex_error& error) {
    std::fprintf(stderr, "await_line: %s: %s\n", argv[2], error.what());
    return 2;
  }
}
