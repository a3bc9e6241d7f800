#include "adapters/macos/shell/program_facts.hpp"

namespace velotap {

ProgramFacts programFacts(CocoaProgram& program) {
  constexpr const char* kUnversioned = "dev";
  return {.version = program.entry("CFBundleShortVersionString").value_or(kUnversioned),
          .build = program.entry("CFBundleVersion").value_or(kUnversioned),
          .notice = program.entry("NSHumanReadableCopyright").value_or(""),
          .systemVersion = program.systemVersion()};
}

}  // namespace velotap
