#include "lab/replay_command.hpp"

#include <array>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <variant>

#include "lab/effect_lines.hpp"
#include "lab/replay.hpp"
#include "lab/scenario_parser.hpp"

namespace velotap::lab {
namespace {

constexpr std::string_view kHelp =
    "usage: velotap-lab replay [--debug] [--set KEY=VALUE]... FILE...\n"
    "\n"
    "Plays scenarios to the recogniser on a simulated desktop, in virtual time, and\n"
    "prints each observable effect as one line of JSON.\n"
    "\n"
    "  --debug          print the diagnostic lines too\n"
    "  --set KEY=VALUE  override a setting of the stage; VALUE is JSON\n"
    "  --help           show this text\n";

struct Request {
  ReplayOptions options;
  std::vector<std::string> files;
  bool help = false;
};

struct NamedScenario {
  std::string file;
  Scenario scenario;
};

std::optional<Request> readArguments(const std::vector<std::string_view>& arguments,
                                     std::ostream& errors) {
  Request request;
  bool onlyFiles = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    if (onlyFiles || !argument.starts_with("--")) {
      request.files.emplace_back(argument);
    } else if (argument == "--") {
      onlyFiles = true;
    } else if (argument == "--help") {
      request.help = true;
    } else if (argument == "--debug") {
      request.options.debug = true;
    } else if (argument == "--set" && i + 1 < arguments.size()) {
      auto setting = parseSetting(arguments[++i]);
      if (const auto* wrong = std::get_if<std::string>(&setting)) {
        errors << "velotap-lab: --set: " << *wrong << '\n';
        return std::nullopt;
      }
      request.options.settings.push_back(std::get<WriteSetting>(std::move(setting)));
    } else if (argument == "--set") {
      errors << "velotap-lab: --set needs KEY=VALUE\n";
      return std::nullopt;
    } else {
      errors << "velotap-lab: unknown option \"" << argument << "\"\n";
      return std::nullopt;
    }
  }
  if (request.files.empty() && !request.help) {
    errors << "velotap-lab: no scenario to replay\n" << kHelp;
    return std::nullopt;
  }
  return request;
}

std::optional<std::string> contentsOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream.is_open()) return std::nullopt;
  std::string text;
  std::array<char, 65536> piece;
  while (stream) {
    stream.read(piece.data(), piece.size());
    text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
  }
  // A folder opens, but reading it fails.
  if (stream.bad()) return std::nullopt;
  return text;
}

std::optional<std::vector<NamedScenario>> readScenarios(const std::vector<std::string>& files,
                                                        std::ostream& errors) {
  std::vector<NamedScenario> scenarios;
  for (const std::string& file : files) {
    const auto text = contentsOf(file);
    if (!text) {
      errors << file << ": cannot be read\n";
      return std::nullopt;
    }
    auto parsed = parseScenario(*text);
    if (const auto* wrong = std::get_if<ScenarioError>(&parsed)) {
      errors << file << ':' << wrong->line << ": " << wrong->message << '\n';
      return std::nullopt;
    }
    scenarios.push_back({file, std::get<Scenario>(std::move(parsed))});
  }
  return scenarios;
}

}  // namespace

std::string_view replayHelp() {
  return kHelp;
}

int runReplayCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors) {
  const auto request = readArguments(arguments, errors);
  if (!request) return kExitUsage;
  if (request->help) {
    out << kHelp;
    return kExitGood;
  }
  const auto scenarios = readScenarios(request->files, errors);
  if (!scenarios) return kExitUsage;
  int status = kExitGood;
  for (const auto& [file, scenario] : *scenarios) {
    if (scenarios->size() > 1) out << scenarioLine(file) << '\n';
    const auto faults = replay(scenario, request->options,
                               [&out](const std::string& line) { out << line << '\n'; });
    for (const std::string& fault : faults) {
      errors << file << ": " << fault << '\n';
      status = kExitFailed;
    }
  }
  out.flush();
  if (!out) {
    errors << "velotap-lab: the output could not be written\n";
    status = kExitFailed;
  }
  return status;
}

}  // namespace velotap::lab
