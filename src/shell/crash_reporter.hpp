// Keeps a record of how a run ended, and offers it to the person at the next launch.
//
// Every run owns one log file, made empty at launch and filled only by a fatal signal or an
// uncaught exception. At launch, empty and oversized logs of earlier runs are deleted and the first
// of the others is offered: mailed through the person's own mail program, deleted, or kept for the
// next launch. Nothing is ever sent by the program itself.
//
// Main thread. Whatever goes wrong with files is ignored: crash reporting must not keep the program
// from starting. Two programs must not share the folder at the same time; single instances see to
// that.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/alerts.hpp"

namespace velotap {

class CrashReporter {
 public:
  /// What is to be done with a file of the folder.
  enum class ReportDisposition { offer, empty, oversized, skip };

  static constexpr std::uint64_t kLargestOffered = 1'048'576;  ///< bytes, inclusive
  static constexpr std::size_t kPreviewLength = 4000;          ///< bytes

  struct Surroundings {
    std::string crashDir;        ///< "Velotap/Crashes" in the user's folder for such things
    std::string version;         ///< of the program; empty when unknown
    std::string supportAddress;  ///< who gets the mail
    std::function<std::chrono::system_clock::time_point()> now;
    std::function<std::string()> uuid;
    /// Shows an alert until it is answered: the index of the button.
    std::function<int(const AlertRequest&)> ask;
    /// Hands an address to the person's programs, and tells now or later whether one took it.
    std::function<void(const std::string& url, std::function<void(bool taken)>)> openUrl;
    std::function<std::string(std::string_view key)> localize;
  };

  explicit CrashReporter(Surroundings surroundings);

  /// Makes the folder (for the user alone) and this run's log, and installs the handlers.
  void install();
  /// Tidies the folder, and offers one report if there is one.
  void offerPendingReports();

  [[nodiscard]] const std::string& crashDir() const noexcept { return surroundings_.crashDir; }
  /// This run's log; the same text for the whole run.
  [[nodiscard]] const std::string& logPath();

  /// "crash-vVERSION-SECONDS-UUID.log"; without a version "dev" stands in its place.
  [[nodiscard]] static std::string logName(std::string_view version,
                                           std::chrono::system_clock::time_point date,
                                           std::string_view uuid);
  [[nodiscard]] static ReportDisposition reportDisposition(const std::string& path,
                                                           const std::string& currentLogPath);

  struct Report {
    std::string path;
    std::string preview;  ///< its beginning, as valid UTF-8
  };
  /// The first of the files that can be read.
  [[nodiscard]] static std::optional<Report> firstReadableReport(
      const std::vector<std::string>& paths);

 private:
  [[nodiscard]] std::vector<std::string> tidyAndListCandidates();
  [[nodiscard]] AlertRequest offerText() const;

  Surroundings surroundings_;
  std::string logPath_;
};

}  // namespace velotap
