#include "adapters/linux/desktop/linux_shell.hpp"

#include <cstdlib>
#include <filesystem>

namespace velotap {
namespace {

const char* environmentOf(const char* name) {
  return std::getenv(name);
}

// The folder that a variable names, if that is an absolute path, else one below the user's home.
std::string folderOf(const std::function<const char*(const char* name)>& environment,
                     const char* variable, const char* belowHome) {
  const char* const folder = environment(variable);
  if (folder != nullptr && *folder == '/') return folder;
  const char* const home = environment("HOME");
  return (home == nullptr ? std::string() : std::string(home)) + belowHome;
}

// An installation may have been moved as a whole.
std::string helperBeside(const std::string& program) {
  const auto folder = std::filesystem::path(program).parent_path();
  return (folder / VELOTAP_ACCESS_HELPER_BESIDE).lexically_normal().string();
}

}  // namespace

std::string LinuxShell::crashFolder(
    const std::function<const char*(const char* name)>& environment) {
  return folderOf(environment, "XDG_STATE_HOME", "/.local/state") + "/Velotap/Crashes";
}

std::string LinuxShell::autostartFolder(
    const std::function<const char*(const char* name)>& environment) {
  return folderOf(environment, "XDG_CONFIG_HOME", "/.config") + "/autostart";
}

std::string LinuxShell::programPath() {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : (self.parent_path() / "velotap").string();
}

LinuxShell::LinuxShell(const LinuxHost& host, LinuxDesktop& desktop, Announcements& announcements,
                       UpdateService& updates)
    : urls_(host.loop, host.queue, SessionEnvironment::ofThisProcess().currentDesktop),
      loginItem_(autostartFolder(&environmentOf), programPath(), urls_),
      access_(host.loop, host.queue),
      prompt_(host.loop,
              {.helper = findAccessHelper({helperBeside(programPath()), VELOTAP_ACCESS_HELPER,
                                           VELOTAP_SOURCE_ACCESS_HELPER}),
               .program = programPath()},
              access_, desktop.sessionActivity(), urls_),
      platform_{.trustPrompt = prompt_,
                .loginItem = loginItem_,
                .updates = updates,
                .announcements = announcements,
                .urls = urls_,
                .crashFolder = crashFolder(&environmentOf)} {}

}  // namespace velotap
