#include "adapters/linux/files/read_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace velotap {
namespace {

using State = FileContent::State;

FileContent contentOf(int file, std::size_t limit) {
  struct stat info {};
  if (::fstat(file, &info) != 0) return {State::unreadable, {}, std::strerror(errno)};
  if (!S_ISREG(info.st_mode)) return {State::notAFile, {}, "it is not a regular file"};
  std::string text;
  std::array<char, 16384> block;
  while (true) {
    const ssize_t n = ::read(file, block.data(), block.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return {State::unreadable, {}, std::strerror(errno)};
    if (n == 0) return {State::present, std::move(text), {}};
    text.append(block.data(), static_cast<std::size_t>(n));
    if (text.size() > limit) {
      return {State::tooLarge, {}, "it is larger than " + std::to_string(limit) + " bytes"};
    }
  }
}

}  // namespace

FileContent readFile(const std::string& path, std::size_t limit) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) {
    if (errno == ENOENT) return {State::absent, {}, {}};
    return {State::unreadable, {}, std::strerror(errno)};
  }
  FileContent content = contentOf(file, limit);
  ::close(file);
  return content;
}

}  // namespace velotap
