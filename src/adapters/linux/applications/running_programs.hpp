// What this person's processes run, and which application each was started as.
//
// Reads the process folder when asked and keeps nothing. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velotap {

struct RunningProgram {
  std::string program;      ///< base name; of a script, the script's
  std::string application;  ///< desktop-file id it was started as; empty when nobody says
};

/// Of the processes that belong to this user. `folder` is where the kernel shows processes.
[[nodiscard]] std::vector<RunningProgram> runningPrograms(const std::string& folder,
                                                          unsigned userId);

/// The application in a control group's path, as session managers name the unit they start it in:
/// "app-gnome-org.mozilla.firefox-4711.scope", "app-org.kde.konsole@6fb3.service". Empty for
/// anything else.
[[nodiscard]] std::string applicationOfControlGroup(std::string_view path);

/// The base name of what a process runs. `arguments` as the kernel shows them, each ended by a zero
/// byte; a program that runs scripts gives way to its script.
[[nodiscard]] std::string programOfProcess(std::string_view executable, std::string_view arguments);

}  // namespace velotap
