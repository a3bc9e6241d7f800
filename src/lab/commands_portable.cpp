#include <array>

#include "lab/commands.hpp"
#include "lab/replay_command.hpp"

namespace velotap::lab {
namespace {

constexpr std::array kCommands = {
    Command{"replay", "play scenarios to the recogniser and print what comes of them",
            &runReplayCommand},
};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

}  // namespace velotap::lab
