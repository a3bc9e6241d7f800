#include "adapters/linux/applications/running_programs.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace velotap {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDeleted = " (deleted)";
constexpr std::string_view kEscapedHyphen = "\\x2d";

std::string_view baseName(std::string_view path) {
  return path.substr(path.find_last_of('/') + 1);
}

bool runsScripts(std::string_view program) {
  constexpr std::array<std::string_view, 8> kInterpreters = {"python", "perl", "ruby", "bash",
                                                             "dash",   "node", "gjs",  "java"};
  return program == "sh" ||
         std::any_of(kInterpreters.begin(), kInterpreters.end(),
                     [program](std::string_view each) { return program.starts_with(each); });
}

// The first argument after the program's own name that is no option.
std::string_view scriptOf(std::string_view arguments) {
  bool first = true;
  while (!arguments.empty()) {
    const std::string_view argument = arguments.substr(0, arguments.find('\0'));
    if (!first && !argument.empty() && argument.front() != '-') return argument;
    first = false;
    arguments.remove_prefix(std::min(argument.size() + 1, arguments.size()));
  }
  return {};
}

std::string contents(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

std::string controlGroupOf(const fs::path& process) {
  std::istringstream lines(contents(process / "cgroup"));
  for (std::string line; std::getline(lines, line);) {
    const auto path = line.find('/');
    if (path == std::string::npos) continue;
    std::string application = applicationOfControlGroup(std::string_view(line).substr(path));
    if (!application.empty()) return application;
  }
  return {};
}

bool isNumber(std::string_view name) {
  return !name.empty() && name.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::string applicationOfControlGroup(std::string_view path) {
  std::string_view unit = baseName(path);
  if (!unit.starts_with("app-")) return {};
  unit.remove_prefix(4);
  if (unit.ends_with(".scope")) {
    unit.remove_suffix(6);
    const auto number = unit.find_last_of('-');
    if (number == std::string_view::npos) return {};
    unit = unit.substr(0, number);
  } else if (unit.ends_with(".service")) {
    unit.remove_suffix(8);
    unit = unit.substr(0, unit.find('@'));
  } else {
    return {};
  }
  // What started it comes first, if it is named at all; hyphens of the id itself are escaped.
  std::string application(unit.substr(unit.find_last_of('-') + 1));
  for (auto at = application.find(kEscapedHyphen); at != std::string::npos;
       at = application.find(kEscapedHyphen, at + 1)) {
    application.replace(at, kEscapedHyphen.size(), "-");
  }
  return application;
}

std::string programOfProcess(std::string_view executable, std::string_view arguments) {
  if (executable.ends_with(kDeleted)) executable.remove_suffix(kDeleted.size());
  const std::string_view program = baseName(executable);
  if (runsScripts(program)) {
    const std::string_view script = baseName(scriptOf(arguments));
    if (!script.empty()) return std::string(script);
  }
  return std::string(program);
}

std::vector<RunningProgram> runningPrograms(const std::string& folder, unsigned userId) {
  std::vector<RunningProgram> result;
  std::error_code error;
  for (fs::directory_iterator process(folder, error), end; !error && process != end;
       process.increment(error)) {
    if (!isNumber(process->path().filename().string())) continue;
    struct stat status {};
    if (stat(process->path().c_str(), &status) != 0 || status.st_uid != userId) continue;
    // A process that ends meanwhile, or does not let itself be looked into, has no executable.
    std::error_code gone;
    const fs::path executable = fs::read_symlink(process->path() / "exe", gone);
    if (gone) continue;
    result.push_back(
        {.program = programOfProcess(executable.string(), contents(process->path() / "cmdline")),
         .application = controlGroupOf(process->path())});
  }
  return result;
}

}  // namespace velotap
