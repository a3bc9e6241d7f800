#include "adapters/linux/applications/running_programs.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

TEST(ApplicationOfControlGroup, ReadsTheUnitsOfSessionManagers) {
  EXPECT_EQ(
      applicationOfControlGroup("/user.slice/app.slice/app-gnome-org.mozilla.firefox-47.scope"),
      "org.mozilla.firefox");
  EXPECT_EQ(applicationOfControlGroup("/app-org.kde.konsole@6fb3.service"), "org.kde.konsole");
  EXPECT_EQ(applicationOfControlGroup("/app-flatpak-com.valvesoftware.Steam-12.scope"),
            "com.valvesoftware.Steam");
  EXPECT_EQ(applicationOfControlGroup("/app-gnome-virt\\x2dmanager-9.scope"), "virt-manager");
  EXPECT_EQ(applicationOfControlGroup("/app-dbus.service"), "dbus");
}

TEST(ApplicationOfControlGroup, KnowsNothingOfOtherUnits) {
  for (const auto* path : {"", "/", "/init.scope", "/user.slice/session-2.scope",
                           "/app.slice/foo.service", "/app-org.x-1.slice", "/app-x.scope"}) {
    EXPECT_EQ(applicationOfControlGroup(path), "") << path;
  }
}

TEST(ProgramOfProcess, IsTheExecutableOrItsScript) {
  EXPECT_EQ(programOfProcess("/usr/lib/firefox/firefox", "firefox\0--new\0"s), "firefox");
  EXPECT_EQ(programOfProcess("/usr/bin/steam (deleted)", ""), "steam");
  EXPECT_EQ(programOfProcess("/usr/bin/python3.11", "python3\0-u\0/usr/bin/terminator\0x\0"s),
            "terminator");
  EXPECT_EQ(programOfProcess("/usr/bin/sh", "sh\0/opt/tool/run.sh\0"s), "run.sh");
  EXPECT_EQ(programOfProcess("/usr/bin/python3.11", "python3\0"s), "python3.11");
  EXPECT_EQ(programOfProcess("/usr/bin/python3.11", ""), "python3.11");
  EXPECT_EQ(programOfProcess("", ""), "");
}

TEST(RunningPrograms, AreReadFromTheProcessFolder) {
  const TemporaryFolder folder;
  const auto process = [&folder](const std::string& id, const std::string& executable,
                                 const std::string& group) {
    fs::create_directories(folder.path() / id);
    if (!executable.empty()) fs::create_symlink(executable, folder.path() / id / "exe");
    std::ofstream(folder.path() / id / "cgroup") << group;
    std::ofstream(folder.path() / id / "cmdline") << executable << '\0';
  };
  process("10", "/usr/bin/gedit", "0::/user.slice/app-gnome-org.gnome.gedit-10.scope\n");
  process("11", "/usr/bin/xterm", "12:pids:/x\n0::/session-1.scope\n");
  process("12", "", "0::/\n");
  process("self", "/usr/bin/self", "0::/\n");
  auto programs = runningPrograms(folder.path().string(), getuid());
  std::sort(programs.begin(), programs.end(),
            [](const auto& a, const auto& b) { return a.program < b.program; });
  ASSERT_EQ(programs.size(), 2U);
  EXPECT_EQ(programs[0].program, "gedit");
  EXPECT_EQ(programs[0].application, "org.gnome.gedit");
  EXPECT_EQ(programs[1].program, "xterm");
  EXPECT_EQ(programs[1].application, "");
  EXPECT_TRUE(runningPrograms(folder.path().string(), getuid() + 1).empty());
  EXPECT_TRUE(runningPrograms((folder.path() / "missing").string(), getuid()).empty());
}

TEST(RunningPrograms, OfThisMachineHoldThisTest) {
  const auto programs = runningPrograms("/proc", getuid());
  const bool here = std::any_of(programs.begin(), programs.end(), [](const RunningProgram& each) {
    return each.program == "test_linux_applications";
  });
  EXPECT_TRUE(here);
}

}  // namespace
}  // namespace velotap
