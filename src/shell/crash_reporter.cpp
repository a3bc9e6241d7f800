#include "shell/crash_reporter.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/utf8.hpp"
#include "shell/crash_marker.hpp"
#include "shell/exception_record.hpp"
#include "shell/mail_link.hpp"

namespace velotap {
namespace {

namespace fs = std::filesystem;

enum Button { email = 0, discard = 1 };  // anything else is "Later"

void createPrivateFolder(const fs::path& folder) {
  fs::path sofar;
  for (const fs::path& part : folder) {
    sofar /= part;
    ::mkdir(sofar.c_str(), 0700);
  }
  // It may have existed, with wider permissions.
  ::chmod(folder.c_str(), 0700);
}

std::optional<std::string> readBeginning(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return std::nullopt;
  std::string bytes(CrashReporter::kPreviewLength, '\0');
  std::size_t length = 0;
  ssize_t got = 1;
  while (got > 0 && length < bytes.size()) {
    got = ::read(file, bytes.data() + length, bytes.size() - length);
    if (got > 0) length += static_cast<std::size_t>(got);
  }
  ::close(file);
  if (got < 0) return std::nullopt;
  bytes.resize(length);
  return bytes;
}

// Where the folder does not let go of a file, an empty file is not offered again either.
void removeReport(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && ::truncate(path.c_str(), 0) != 0) return;
}

}  // namespace

CrashReporter::CrashReporter(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}

const std::string& CrashReporter::logPath() {
  if (logPath_.empty()) {
    logPath_ = (fs::path(surroundings_.crashDir) /
                logName(surroundings_.version, surroundings_.now(), surroundings_.uuid()))
                   .string();
  }
  return logPath_;
}

std::string CrashReporter::logName(std::string_view version,
                                   std::chrono::system_clock::time_point date,
                                   std::string_view uuid) {
  // A duration cast truncates toward zero.
  const auto seconds =
      std::chrono::duration_cast<std::chrono::seconds>(date.time_since_epoch()).count();
  return "crash-v" + std::string(version.empty() ? "dev" : version) + "-" +
         std::to_string(seconds) + "-" + std::string(uuid) + ".log";
}

void CrashReporter::install() {
  createPrivateFolder(surroundings_.crashDir);
  removeUnfinishedRecords(surroundings_.crashDir);
  installExceptionRecorder(logPath());
  MCInstallCrashSignalHandlers(logPath().c_str());
}

CrashReporter::ReportDisposition CrashReporter::reportDisposition(
    const std::string& path, const std::string& currentLogPath) {
  if (path == currentLogPath) return ReportDisposition::skip;
  const fs::path file(path);
  if (!file.filename().string().starts_with("crash-") || file.extension() != ".log") {
    return ReportDisposition::skip;
  }
  // Of the entry itself: a link is never followed.
  struct stat entry = {};
  if (::lstat(path.c_str(), &entry) != 0 || !S_ISREG(entry.st_mode)) {
    return ReportDisposition::skip;
  }
  const auto size = static_cast<std::uint64_t>(entry.st_size);
  if (size == 0) return ReportDisposition::empty;
  return size <= kLargestOffered ? ReportDisposition::offer : ReportDisposition::oversized;
}

std::optional<CrashReporter::Report> CrashReporter::firstReadableReport(
    const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (const auto bytes = readBeginning(path)) return Report{path, repairedUtf8(*bytes)};
  }
  return std::nullopt;
}

std::vector<std::string> CrashReporter::tidyAndListCandidates() {
  std::vector<std::string> candidates;
  std::vector<std::string> rubbish;
  std::error_code error;
  for (fs::directory_iterator entries(surroundings_.crashDir, error), end; !error && entries != end;
       entries.increment(error)) {
    const std::string path = entries->path().string();
    switch (reportDisposition(path, logPath())) {
      case ReportDisposition::offer:
        candidates.push_back(path);
        break;
      case ReportDisposition::empty:
      case ReportDisposition::oversized:
        rubbish.push_back(path);
        break;
      case ReportDisposition::skip:
        break;
    }
  }
  for (const std::string& path : rubbish) ::unlink(path.c_str());
  std::stable_sort(candidates.begin(), candidates.end(), [](const auto& a, const auto& b) {
    return fs::path(a).filename().string() < fs::path(b).filename().string();
  });
  return candidates;
}

AlertRequest CrashReporter::offerText() const {
  const auto& text = surroundings_.localize;
  return {.message = text("Velotap crashed last time"),
          .informativeText = text("crash.report.body"),
          .buttons = {text("Email Report"), text("Delete"), text("Later")}};
}

void CrashReporter::offerPendingReports() {
  const auto report = firstReadableReport(tidyAndListCandidates());
  if (!report) return;
  const int answer = surroundings_.ask(offerText());
  if (answer == discard) removeReport(report->path);
  if (answer != email) return;
  // Until a program has the letter the report is all there is.
  surroundings_.openUrl(
      mailLink(surroundings_.supportAddress, "Velotap crash report", report->preview),
      [path = report->path](bool taken) {
        if (taken) removeReport(path);
      });
}

}  // namespace velotap
