// `velotap-lab`: the bench on which the recogniser is tried without a desktop.

#include <iostream>
#include <string_view>
#include <vector>

#include "lab/commands.hpp"
#include "lab/replay_command.hpp"

namespace {

using velotap::lab::kExitGood;
using velotap::lab::kExitUsage;

using Arguments = std::vector<std::string_view>;
using velotap::lab::Command;
using velotap::lab::commands;

void printHelp(std::ostream& out) {
  out << "usage: velotap-lab COMMAND [ARGUMENT]...\n\n";
  for (const Command& command : commands()) {
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
  for (const Command& command : commands()) {
    if (command.name == arguments.front()) {
      return command.run({arguments.begin() + 1, arguments.end()}, std::cout, std::cerr);
    }
  }
  std::cerr << "velotap-lab: unknown command \"" << arguments.front() << "\"\n";
  printHelp(std::cerr);
  return kExitUsage;
}
