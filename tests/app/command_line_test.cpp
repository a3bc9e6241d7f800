#include "app/command_line.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace velotap {
namespace {

CommandLine parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "velotap");
  return parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

TEST(CommandLine, NothingAskedForIsNothing) {
  const CommandLine line = parse({});
  EXPECT_FALSE(line.help);
  EXPECT_FALSE(line.version);
  EXPECT_TRUE(line.unknown.empty());
  EXPECT_EQ(unknownText(line), "");
  EXPECT_TRUE(parseCommandLine(0, nullptr).unknown.empty()) << "not even the program's path";
}

TEST(CommandLine, HelpAndVersionAreFound) {
  EXPECT_TRUE(parse({"--help"}).help);
  EXPECT_TRUE(parse({"-h"}).help);
  EXPECT_TRUE(parse({"--version"}).version);
}

TEST(CommandLine, EverythingElseIsUnknownInItsOrder) {
  const CommandLine line = parse({"--Help", "--version=2", "", "file", "--version"});
  EXPECT_FALSE(line.help);
  EXPECT_TRUE(line.version);
  EXPECT_EQ(line.unknown, (std::vector<std::string_view>{"--Help", "--version=2", "", "file"}));
  EXPECT_TRUE(
      unknownText(line).starts_with("velotap: unknown option --Help ignored (see --help)\n"
                                    "velotap: unknown option --version=2 ignored"));
}

TEST(CommandLine, ProgramsOwnPathIsNoArgument) {
  const char* const path = "--help";
  EXPECT_FALSE(parseCommandLine(1, &path).help);
}

TEST(CommandLine, HelpNamesEveryFlag) {
  for (const char* flag : {"--devices", "--watch", "--calibrate", "--version", "--help",
                           "VELOTAP_DEBUG", "VELOTAP_MULTITOUCH_LIBRARY"}) {
    EXPECT_NE(helpText().find(flag), std::string::npos) << flag;
  }
}

}  // namespace
}  // namespace velotap
