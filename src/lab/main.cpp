// `velotap-lab`: the bench on which the recogniser is tried without a desktop.

#include <array>
#include <iostream>
#include <string_view>
#include <vector>

#include "lab/replay_command.hpp"

namespace {

using velotap::lab::kExitGood;
using velotap::lab::kExitUsage;

using Arguments = std::vector<std::string_view>;

struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(const Arguments& arguments, std::ostream& out, std::ostream& errors);
};

constexpr std::array kCommands = {
    Command{"replay", "play scenarios to the recogniser and print what comes of them",
            velotap::lab::runReplayCommand},
};

void printHelp(std::ostream& out) {
  out << "usage: velotap-lab COMMAND [ARGUMENT]...\n\n";
  for (const Command& command : kCommands) {
    out << "  " << command.name << "  " << command.summary << '\n';
  }
  out << "\nvelotap-lab COMMAND --help tells more.\n";
}

}  // namespace

int main(int argc, char** argv) {
  const Arguments arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  if (arguments.empty()) {
    printHelp(std::cerr);
    return kExitUsage;
  }
  if (arguments.front() == "--help") {
    printHelp(std::cout);
    return kExitGood;
  }
  for (const Command& command : kCommands) {
    if (command.name == arguments.front()) {
      return command.run({arguments.begin() + 1, arguments.end()}, std::cout, std::cerr);
    }
  }
  std::cerr << "velotap-lab: unknown command \"" << arguments.front() << "\"\n";
  printHelp(std::cerr);
  return kExitUsage;
}
