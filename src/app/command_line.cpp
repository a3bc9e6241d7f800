#include "app/command_line.hpp"

namespace velotap {

CommandLine parseCommandLine(int argc, const char* const* argv) {
  CommandLine line;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (argument == "--listlane-capture") {
      line.capture = true;
    } else if (argument == "--background") {
      line.background = true;
    } else {
      line.unknown.push_back(argument);
    }
  }
  return line;
}

std::string helpText() {
  return "Velotap gives trackpads and Magic Mice a middle mouse button and a few extra gestures.\n"
         "\n"
         "usage: velotap [option]\n"
         "\n"
         "Without an option it runs until it is told to quit, with a status item and windows\n"
         "where there is a display.\n"
         "\n"
         "  --devices    list the multitouch devices\n"
         "  --watch      print a line for every touch frame\n"
         "  --calibrate  dump raw touch records once a second\n"
         "  --background run without status item and windows\n"
         "  --listlane-capture FOLDER [--scenes NAME,...] [--dark]\n"
         "               write pictures of the settings window and end\n"
         "  --version    print the version\n"
         "  --help       print this text\n"
         "\n"
         "environment:\n"
         "  VELOTAP_DEBUG               print diagnostic lines\n"
         "  VELOTAP_MULTITOUCH_LIBRARY  path of another multitouch provider\n";
}

std::string versionText() {
  return "velotap " VELOTAP_VERSION "\n";
}

std::string unknownText(const CommandLine& line) {
  std::string text;
  for (const std::string_view argument : line.unknown) {
    text += "velotap: unknown option " + std::string(argument) + " ignored (see --help)\n";
  }
  return text;
}

}  // namespace velotap
