#include <array>

#include "lab/commands.hpp"
#include "lab/replay_command.hpp"
#include "lab/touches/touch_commands.hpp"

namespace velotap::lab {
namespace {

constexpr std::array kCommands = {
    Command{"replay", "play scenarios to the recogniser and print what comes of them",
            &runReplayCommand},
    Command{"demo", "play recordings and tell what became of each touch", &runDemoCommand},
    Command{"import", "turn a recording of evemu, evtest or libinput into a scenario",
            &runImportCommand},
    Command{"record", "write what fingers do on a device as a scenario", &runRecordCommand},
};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

}  // namespace velotap::lab
