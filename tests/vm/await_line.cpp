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
#include <span>
#include <string>

#include "guest_io.hpp"

namespace velotap::vm {
namespace {

struct Wanted {
  std::filesystem::path file;
  const char* expression = nullptr;
  std::int64_t seconds = 10;
  long count = 1;
};

/// The line with which the file has as many matching lines as wanted.
std::optional<std::string> find(const Wanted& wanted, const std::regex& pattern) {
  std::ifstream in(wanted.file);
  std::string line;
  long found = 0;
  while (std::getline(in, line)) {
    if (std::regex_search(line, pattern) && ++found == wanted.count) return line;
  }
  return std::nullopt;
}

int await(const Wanted& wanted) {
  const std::regex pattern(wanted.expression);
  const Descriptor notices(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  // The folder, not the file: it tells of both the file's creation and its growth.
  const std::filesystem::path folder =
      wanted.file.has_parent_path() ? wanted.file.parent_path() : ".";
  if (inotify_add_watch(notices.get(), folder.c_str(), IN_CREATE | IN_MODIFY) < 0) {
    std::perror("await_line");
    return 2;
  }
  const std::int64_t limit = monotonicNanoseconds() + wanted.seconds * kNanosecondsPerSecond;
  for (;;) {
    if (const auto line = find(wanted, pattern)) {
      std::puts(line->c_str());
      return 0;
    }
    const std::int64_t left = limit - monotonicNanoseconds();
    if (left <= 0) {
      std::fprintf(stderr, "await_line: not %ld lines like '%s' in %s after %lld s\n", wanted.count,
                   wanted.expression, wanted.file.c_str(), static_cast<long long>(wanted.seconds));
      return 1;
    }
    pollfd polled{notices.get(), POLLIN, 0};
    poll(&polled, 1, static_cast<int>(left / kNanosecondsPerMillisecond) + 1);
    std::array<char, 4096> dropped{};
    while (read(notices.get(), dropped.data(), dropped.size()) > 0) {
    }
  }
}

std::optional<Wanted> parseArguments(std::span<char*> arguments) {
  if (arguments.size() < 2 || arguments.size() > 4) return std::nullopt;
  Wanted wanted{.file = arguments[0], .expression = arguments[1]};
  if (arguments.size() > 2) wanted.seconds = std::strtol(arguments[2], nullptr, 10);
  if (arguments.size() > 3) wanted.count = std::strtol(arguments[3], nullptr, 10);
  if (wanted.seconds <= 0 || wanted.count <= 0) return std::nullopt;
  return wanted;
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  const auto wanted =
      velotap::vm::parseArguments(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (!wanted) {
    std::fputs("usage: await_line FILE REGEX [SECONDS [COUNT]]\n", stderr);
    return 2;
  }
  try {
    return velotap::vm::await(*wanted);
  } catch (const std::regex_error& error) {
    std::fprintf(stderr, "await_line: %s: %s\n", argv[2], error.what());
    return 2;
  }
}
