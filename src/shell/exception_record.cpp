#include "shell/exception_record.hpp"

#include <cxxabi.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <utility>

namespace velotap {
namespace {

constexpr std::string_view kUnfinishedPrefix = ".crash-";
constexpr std::string_view kUnfinishedSuffix = ".unfinished";

std::string unfinishedNameOf(const std::filesystem::path& path) {
  std::filesystem::path name = path;
  name.replace_filename("." + path.filename().string() + std::string(kUnfinishedSuffix));
  return name.string();
}

bool writeAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::string readableName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
  return name == nullptr ? type.name() : name.get();
}

std::string reasonOfCurrentException() {
  try {
    throw;
  } catch (const std::exception& error) {
    return error.what();
  } catch (const std::string& text) {
    return text;
  } catch (const char* text) {
    return text == nullptr ? "" : text;
  } catch (...) {
    return {};
  }
}

std::vector<std::string> currentStack() {
  std::array<void*, 64> frames{};
  const int count = ::backtrace(frames.data(), static_cast<int>(frames.size()));
  const std::unique_ptr<char*, void (*)(void*)> symbols(::backtrace_symbols(frames.data(), count),
                                                        &std::free);
  std::vector<std::string> lines;
  if (symbols == nullptr) return lines;
  for (int i = 0; i < count; ++i) lines.emplace_back(symbols.get()[i]);
  return lines;
}

std::string& recordPath() {
  // Never destroyed: threads may fail while the process already ends.
  static std::string& path = *new std::string;
  return path;
}

[[noreturn]] void recordAndAbort() noexcept {
  // The second thread to fail, or a failure in here, has nothing to add.
  static std::atomic_flag recording;
  if (!recording.test_and_set()) {
    const std::vector<std::string> stack = currentStack();
    // Without a type somebody asked for the end without throwing anything.
    const std::type_info* const type = abi::__cxa_current_exception_type();
    writeRecord(
        recordPath(),
        exceptionRecord(type == nullptr ? "std::terminate" : readableName(*type),
                        type == nullptr ? std::string() : reasonOfCurrentException(), stack));
  }
  std::abort();
}

}  // namespace

std::string exceptionRecord(const std::string& name, const std::string& reason,
                            const std::vector<std::string>& stack) {
  std::string record =
      "Uncaught exception: " + name + "\nReason: " + (reason.empty() ? "-" : reason) + "\n";
  for (std::size_t i = 0; i < stack.size(); ++i) {
    if (i > 0) record += '\n';
    record += stack[i];
  }
  return record;
}

void writeRecord(const std::string& path, const std::string& record) {
  const std::string unfinished = unfinishedNameOf(path);
  const int file =
      ::open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) return;
  const bool whole = writeAll(file, record);
  const bool closed = ::close(file) == 0;
  if (!whole || !closed || std::rename(unfinished.c_str(), path.c_str()) != 0) {
    ::unlink(unfinished.c_str());
  }
}

void removeUnfinishedRecords(const std::string& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator entries(folder, error), end; !error && entries != end;
       entries.increment(error)) {
    const std::string name = entries->path().filename().string();
    if (!name.starts_with(kUnfinishedPrefix) || !name.ends_with(kUnfinishedSuffix)) continue;
    std::error_code ignored;
    std::filesystem::remove(entries->path(), ignored);
  }
}

void installExceptionRecorder(std::string path) {
  recordPath() = std::move(path);
  // The first call loads a library, for which the end of the process is a bad moment.
  void* frame = nullptr;
  ::backtrace(&frame, 1);
  std::set_terminate(&recordAndAbort);
}

}  // namespace velotap
