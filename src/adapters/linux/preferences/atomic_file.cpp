#include "adapters/linux/preferences/atomic_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

namespace velotap {
namespace {

namespace fs = std::filesystem;

// As many links as the kernel itself follows in one path.
constexpr int kMostLinks = 40;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;
constexpr std::string_view kFreshSuffix = ".new-";

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

std::string freshName(const std::string& target, pid_t process) {
  return target + std::string(kFreshSuffix) + std::to_string(process);
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
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 0777U : kPrivateFile;
}

std::optional<std::string> writeNew(const std::string& path, const std::string& content,
                                    mode_t mode, const FileCalls& calls) {
  // Whatever stands there was left by a process that had our number and was killed.
  ::unlink(path.c_str());
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!file.ok()) return failure("create");
  if (::fchmod(file.get(), mode) != 0) return failure("set the mode");
  if (!writeAll(file.get(), content, calls)) return failure("write");
  if (calls.sync(file.get()) != 0) return failure("sync");
  if (file.close() != 0) return failure("close");
  return std::nullopt;
}

bool isRunning(pid_t process) {
  return ::kill(process, 0) == 0 || errno != ESRCH;
}

// The process that a name like "settings.json.new-123" belongs to; nothing for any other name.
std::optional<pid_t> writerOf(std::string_view name, std::string_view target) {
  if (!name.starts_with(target)) return std::nullopt;
  name.remove_prefix(target.size());
  if (!name.starts_with(kFreshSuffix)) return std::nullopt;
  name.remove_prefix(kFreshSuffix.size());
  pid_t process = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  const bool whole = error == std::errc() && end == name.data() + name.size();
  return whole && process > 0 ? std::optional(process) : std::nullopt;
}

}  // namespace

FileCalls FileCalls::system() {
  return {.write = ::write, .sync = ::fsync, .rename = [](const char* from, const char* to) {
            return ::rename(from, to);
          }};
}

std::vector<std::string> linkChain(const std::string& path) {
  std::vector<std::string> chain = {path};
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code failed;
    const fs::path target = fs::read_symlink(chain.back(), failed);
    if (failed) break;
    chain.push_back((fs::path(chain.back()).parent_path() / target).string());
  }
  return chain;
}

std::optional<std::string> replaceFile(const std::string& path, const std::string& content,
                                       const FileCalls& calls) {
  const std::string target = linkChain(path).back();
  const std::string fresh = freshName(target, ::getpid());
  auto error = writeNew(fresh, content, modeFor(target), calls);
  if (!error && calls.rename(fresh.c_str(), target.c_str()) != 0) error = failure("rename");
  if (error) {
    ::unlink(fresh.c_str());
    return error;
  }
  // The new content is in place; a folder that cannot be synced only risks the old one coming back
  // after a power cut, which is no reason to tell the person that saving failed.
  const std::string folder = fs::path(target).parent_path().string();
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.ok()) calls.sync(opened.get());
  return std::nullopt;
}

void removeLeftovers(const std::string& path) {
  const fs::path target(linkChain(path).back());
  const std::string name = target.filename().string();
  std::vector<fs::path> leftovers;
  std::error_code failed;
  for (fs::directory_iterator entry(target.parent_path(), failed), end; !failed && entry != end;
       entry.increment(failed)) {
    const auto writer = writerOf(entry->path().filename().string(), name);
    if (writer && (*writer == ::getpid() || !isRunning(*writer))) {
      leftovers.push_back(entry->path());
    }
  }
  for (const fs::path& leftover : leftovers) ::unlink(leftover.c_str());
}

std::optional<std::string> createFolder(const std::string& path) {
  fs::path folder;
  for (const fs::path& part : fs::path(path)) {
    folder /= part;
    if (::mkdir(folder.c_str(), kPrivateFolder) == 0 || errno == EEXIST) continue;
    // A folder above may refuse to be created (read-only, not ours) and exist all the same.
    std::error_code failed;
    const int error = errno;
    if (fs::is_directory(folder, failed)) continue;
    errno = error;
    return failure(("create the folder " + folder.string()).c_str());
  }
  return std::nullopt;
}

}  // namespace velotap
