#include "rerun.hpp"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <variant>

#include "base/log_text.hpp"

namespace velotap::test {
namespace {

using lab::Scenario;
using Verdict = std::vector<std::string>;
using nlohmann::json;

// Added to every time: no round number, so that all of uptime's digits change.
constexpr VirtualTime kShift = std::chrono::milliseconds(7'319);
constexpr double kShiftSeconds = 7.319;

constexpr int kBackKey = 33;
constexpr int kForwardKey = 30;

template <typename Change>
void eachFrame(Scenario& scenario, Change change) {
  for (lab::TimedAction& timed : scenario.timed) {
    if (auto* frame = std::get_if<lab::SendFrame>(&timed.action)) change(*frame);
  }
}

template <typename Change>
void eachTouch(Scenario& scenario, Change change) {
  eachFrame(scenario, [&change](lab::SendFrame& frame) {
    std::for_each(frame.touches.begin(), frame.touches.end(), change);
  });
}

void permute(Scenario& scenario) {
  eachFrame(scenario, [](lab::SendFrame& frame) {
    std::reverse(frame.touches.begin(), frame.touches.end());
  });
}

// Other identifiers, in the opposite order.
void renumber(Scenario& scenario) {
  eachTouch(scenario, [](MTTouch& touch) { touch.identifier = 1000 - touch.identifier; });
}

// A limit of the centre band, seen from the other side; nothing for any other setting.
void mirrorSetting(lab::WriteSetting& setting) {
  if (setting.key != "centerMinX" && setting.key != "centerMaxX") return;
  setting.key = setting.key == "centerMinX" ? "centerMaxX" : "centerMinX";
  if (!setting.value) return;
  if (const double* real = setting.value->real()) setting.value = Value(1 - *real);
  if (const auto* integer = setting.value->integer()) setting.value = Value(1 - *integer);
}

void mirror(Scenario& scenario) {
  eachTouch(scenario, [](MTTouch& touch) {
    touch.position.x = 1 - touch.position.x;
    touch.millimetres.x = -touch.millimetres.x;
    touch.velocity.x = -touch.velocity.x;
  });
  for (lab::Action& action : scenario.stage) {
    if (auto* setting = std::get_if<lab::WriteSetting>(&action)) mirrorSetting(*setting);
  }
  for (lab::TimedAction& timed : scenario.timed) {
    if (auto* setting = std::get_if<lab::WriteSetting>(&timed.action)) mirrorSetting(*setting);
  }
}

void duplicate(Scenario& scenario) {
  std::vector<lab::TimedAction> twice;
  for (const lab::TimedAction& timed : scenario.timed) {
    twice.push_back(timed);
    if (std::holds_alternative<lab::SendFrame>(timed.action)) twice.push_back(timed);
  }
  scenario.timed = std::move(twice);
}

void shift(Scenario& scenario) {
  for (lab::TimedAction& timed : scenario.timed) timed.at += kShift;
}

void expectSame(Verdict&) {}

void editEach(Verdict& verdict, void (*edit)(json& line)) {
  for (std::string& text : verdict) {
    json line = json::parse(text);
    edit(line);
    text = line.dump();
  }
}

// Right is left: swipes go the other way, and so do rotations.
void expectMirrored(Verdict& verdict) {
  editEach(verdict, [](json& line) {
    if (line["kind"] == "key" && line["code"] == kBackKey) {
      line["code"] = kForwardKey;
    } else if (line["kind"] == "key" && line["code"] == kForwardKey) {
      line["code"] = kBackKey;
    } else if (line["kind"] == "gesture" && line["gesture"] == "rotate") {
      const std::string value = line["value"];
      line["value"] = value.starts_with('-') ? value.substr(1) : "-" + value;
      if (line["value"] == "-0.000000") line["value"] = "0.000000";
    }
  });
}

void expectShifted(Verdict& verdict) {
  editEach(verdict, [](json& line) {
    line["t"] = fixedText(std::stod(line["t"].get<std::string>()) + kShiftSeconds, 6);
  });
}

}  // namespace

const std::array<Rerun, 5>& reruns() {
  static constexpr std::array<Rerun, 5> all = {
      {{"permuted", permute, expectSame},
       {"identifiers", renumber, expectSame},
       {"mirrored", mirror, expectMirrored},
       // A frame in which nothing moved is a step of a gesture too.
       {"duplicated", duplicate, expectSame, false},
       {"shifted", shift, expectShifted}}};
  return all;
}

std::vector<std::string> verdictOf(const std::vector<std::string>& lines) {
  Verdict verdict;
  for (const std::string& text : lines) {
    json line = json::parse(text);
    const std::string kind = line["kind"];
    if (kind == "notification" || kind == "log" || kind == "listeners") continue;
    line["t"] = fixedText(line["t"].get<double>(), 6);
    line.erase("duration");
    line.erase("drift");
    if (line.contains("value")) {
      line["value"] = fixedText(line["value"].get<double>(), 6);
      if (line["value"] == "-0.000000") line["value"] = "0.000000";
    }
    verdict.push_back(line.dump());
  }
  return verdict;
}

void dropSteps(std::vector<std::string>& verdict) {
  std::erase_if(verdict, [](const std::string& text) {
    return text.find("\"phase\":\"changed\"") != std::string::npos;
  });
}

}  // namespace velotap::test
