// What the program's bundle says of the program, and the system of itself.
//
// Read from the bundle and not from the build, so that who renames or renumbers a bundle is told
// the truth about it. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace velotap {

/// The bundle that this program runs in, which only Objective-C can ask.
class CocoaProgram {
 public:
  virtual ~CocoaProgram() = default;
  /// An entry of its Info.plist; nothing when there is none or it is no text.
  [[nodiscard]] virtual std::optional<std::string> entry(const std::string& key) = 0;
  /// The system's version in the system's own words.
  [[nodiscard]] virtual std::string systemVersion() = 0;

  /// The bundle of this process. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaProgram> system();
};

struct ProgramFacts {
  std::string version;
  std::string build;
  std::string notice;  ///< the line about rights; may be empty
  std::string systemVersion;
};

/// A program outside of a bundle has the version and the build "dev".
[[nodiscard]] ProgramFacts programFacts(CocoaProgram& program);

}  // namespace velotap
