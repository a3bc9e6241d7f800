// The player's language: one statement a line, says what a hand does to an emulated device.
//
//   ready                       wait until the driver has bound the device and switched
//                               multitouch on
//   touch ID X Y [KEY=VALUE...] put a finger down, or change one that is; keys: major minor size
//                               pressure orientation; what is not named stays as it was
//   move ID DX DY               move a finger that is down
//   lift ID                     the next frame says that the finger has left
//   button MASK                 1 left, 2 right, 4 middle, added together; 0 none
//   motion DX DY                relative motion of the next frame
//   wheel N                     wheel steps of the next frame (plain mouse)
//   frame [MS]                  send a report, then let MS pass (default: the cadence)
//   repeat N DX DY [MS]         N frames; before each, every finger moves by DX,DY
//   cadence MS [MS...]          the gaps that frames use in turn; at first 11
//   tremor UNITS                every finger strays by up to UNITS from where it is, in each frame
//   wait MS                     let MS pass without a report
//   say TEXT                    print TEXT with the time
//   mark TEXT                   print TEXT once the next frame is sent, with the time of its
//   sending destroy                     unplug the device hold                        keep the
//   device until the player is told to end
//
// Blank lines and what follows # are ignored. Parsing is pure; nothing here knows the device, so
// whether X fits into a report is judged later.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velotap::vm {

enum class Verb {
  ready,
  touch,
  move,
  lift,
  button,
  motion,
  wheel,
  frame,
  repeat,
  cadence,
  tremor,
  wait,
  say,
  mark,
  destroy,
  hold,
};

enum class ContactKey { major, minor, size, pressure, orientation };

struct Statement {
  Verb verb = Verb::frame;
  std::vector<int> numbers;                         ///< in the order of the line
  std::vector<std::pair<ContactKey, int>> contact;  ///< of `touch`
  std::string text;                                 ///< of `say` and `mark`
};

/// A statement, or why there is none; neither for a line that says nothing.
struct ParsedLine {
  std::optional<Statement> statement;
  std::string error;
};

[[nodiscard]] ParsedLine parseLine(std::string_view line);

}  // namespace velotap::vm
