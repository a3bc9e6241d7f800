#include "adapters/linux/preferences/atomic_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace velotap {
namespace {

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int get() const { return fd_; }
  [[nodiscard]] bool ok() const { return fd_ >= 0; }
  int close() { return ::close(std::exchange(fd_, -1)); }

 private:
  int fd_;
};

std::string failure(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

std::string linkTarget(const std::string& path) {
  std::array<char, PATH_MAX> target;
  return ::realpath(path.c_str(), target.data()) != nullptr ? std::string(target.data()) : path;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

bool writeAll(int fd, const std::string& content, const FileCalls& calls) {
  std::size_t done = 0;
  while (done < content.size()) {
    const ssize_t n = calls.write(fd, content.data() + done, content.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return false;
    if (n == 0) {
      errno = ENOSPC;
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  return true;
}

// The settings name the applications that a person uses: nobody else's business.
mode_t modeFor(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 0777U : 0600U;
}

std::optional<std::string> writeNew(const std::string& path, const std::string& content,
                                    mode_t mode, const FileCalls& calls) {
  Descriptor file(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode));
  if (!file.ok()) return failure("create");
  if (::fchmod(file.get(), mode) != 0) return failure("set the mode");
  if (!writeAll(file.get(), content, calls)) return failure("write");
  if (calls.sync(file.get()) != 0) return failure("sync");
  if (file.close() != 0) return failure("close");
  return std::nullopt;
}

}  // namespace

FileCalls FileCalls::system() {
  return {.write = ::write, .sync = ::fsync, .rename = [](const char* from, const char* to) {
            return ::rename(from, to);
          }};
}

std::optional<std::string> replaceFile(const std::string& path, const std::string& content,
                                       const FileCalls& calls) {
  const std::string target = linkTarget(path);
  const std::string fresh = target + ".new-" + std::to_string(::getpid());
  auto error = writeNew(fresh, content, modeFor(target), calls);
  if (!error && calls.rename(fresh.c_str(), target.c_str()) != 0) error = failure("rename");
  if (error) {
    ::unlink(fresh.c_str());
    return error;
  }
  // The new content is in place; a folder that cannot be synced only risks the old one coming back
  // after a power cut, which is no reason to tell the person that saving failed.
  const Descriptor folder(::open(folderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.ok()) calls.sync(folder.get());
  return std::nullopt;
}

FileContent readFile(const std::string& path, std::size_t limit) {
  using State = FileContent::State;
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.ok()) {
    if (errno == ENOENT) return {State::absent, {}, {}};
    return {State::unreadable, {}, std::strerror(errno)};
  }
  struct stat info {};
  if (::fstat(file.get(), &info) != 0) return {State::unreadable, {}, std::strerror(errno)};
  if (!S_ISREG(info.st_mode)) return {State::notAFile, {}, "it is not a regular file"};
  std::string text;
  std::array<char, 65536> block;
  while (true) {
    const ssize_t n = ::read(file.get(), block.data(), block.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return {State::unreadable, {}, std::strerror(errno)};
    if (n == 0) return {State::present, std::move(text), {}};
    text.append(block.data(), static_cast<std::size_t>(n));
    if (text.size() > limit) {
      return {State::tooLarge, {}, "it is larger than " + std::to_string(limit) + " bytes"};
    }
  }
}

}  // namespace velotap
