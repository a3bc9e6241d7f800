#include "lab/replay.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

#include "adapters/simulated/simulated_desktop.hpp"
#include "control/services.hpp"
#include "lab/effect_lines.hpp"

namespace velotap::lab {
namespace {

// The texts of a list setting; nothing for any other value.
std::optional<std::vector<std::string>> listOf(const Value& value) {
  if (value.array() == nullptr) return std::nullopt;
  std::vector<std::string> texts;
  for (const Value& item : *value.array()) {
    if (item.text() == nullptr) return std::nullopt;
    texts.push_back(*item.text());
  }
  return texts;
}

class Replay {
 public:
  Replay(const Scenario& scenario, const ReplayOptions& options, const PrintLine& print);
  ~Replay() = default;
  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  void play();
  /// Ends the program; what it did wrong until then.
  [[nodiscard]] std::vector<std::string> end();

  // The statements, on the stage and at a time alike.
  void operator()(const AddDevice& add) { desktop_.multitouch.add(add.device); }
  void operator()(const LoseLibrary& lose);
  void operator()(const LimitTaps& limit);
  void operator()(const WriteSetting& write);
  void operator()(const BringToFront& front) { desktop_.workspace.activate(front.application); }
  void operator()(const AnswerLive& live) { desktop_.workspace.setLive(live.application); }
  void operator()(const PlacePointer& place) { desktop_.events.setPointer(place.location); }
  void operator()(const ShowPractice& show);
  void operator()(const GiveTrust& give);
  void operator()(const WriteSystemPreference& write);
  void operator()(const SelectLayout& select) { desktop_.keyboardLayout.select(select.keys); }
  void operator()(const SendFrame& frame);
  void operator()(const SendMouse& send);
  void operator()(const DisableTap& disable);
  void operator()(const ConnectDevice& connect);
  void operator()(const TellMoment& tell);
  void operator()(const Control& control);
  void operator()(const Wait&) {}

 private:
  void observe();
  void launch();
  void print(const std::string& line) { print_(line); }
  [[nodiscard]] VirtualTime now() const { return desktop_.clock.now(); }

  const Scenario& scenario_;
  const ReplayOptions& options_;
  const PrintLine& print_;
  SimulatedDesktop desktop_;
  std::optional<Rect> practice_;
  std::unique_ptr<Services> services_;  // none before the launch, and none if it failed
  std::vector<Observation> observations_;
};

Replay::Replay(const Scenario& scenario, const ReplayOptions& options, const PrintLine& print)
    : scenario_(scenario), options_(options), print_(print) {
  desktop_.log.setEnabled(options.debug);
}

void Replay::play() {
  for (const Action& action : scenario_.stage) std::visit(*this, action);
  for (const WriteSetting& setting : options_.settings) (*this)(setting);
  launch();
  for (const TimedAction& timed : scenario_.timed) {
    desktop_.mainQueue.runUntil(timed.at);
    std::visit(*this, timed.action);
    desktop_.mainQueue.runDue();
  }
}

void Replay::launch() {
  services_ = std::make_unique<Services>(desktop_.platform);
  if (!services_->multitouch.isAvailable()) {
    services_.reset();
    return;
  }
  services_->practice.set(practice_);
  observe();
  services_->launch();
  desktop_.mainQueue.runDue();
}

void Replay::observe() {
  observations_.push_back(desktop_.events.observePosts(
      [this](const PostedEvent& event) { print(postedLine(now(), event)); }));
  observations_.push_back(desktop_.notifications.observeAll(
      [this](std::string_view name) { print(notificationLine(now(), name)); }));
  observations_.push_back(
      desktop_.log.observeLines([this](const std::string& line) { print(logLine(now(), line)); }));
  observations_.push_back(services_->activity.observeRecords(
      [this](const TapActivity& activity) { print(activityLine(now(), activity)); }));
  observations_.push_back(services_->controller.observeRunning(
      [this](bool running) { print(listenersLine(now(), running)); }));
}

std::vector<std::string> Replay::end() {
  // The end of the program is no part of the scenario.
  observations_.clear();
  services_.reset();
  std::vector<std::string> faults = desktop_.multitouch.faults();
  if (const std::size_t held = desktop_.multitouch.heldReferences(); held != 0) {
    faults.push_back(std::to_string(held) + " reference(s) were never given back");
  }
  return faults;
}

void Replay::operator()(const LoseLibrary& lose) {
  if (lose.symbol.empty()) {
    desktop_.multitouch.setMissing(true);
  } else {
    desktop_.multitouch.removeSymbol(lose.symbol);
  }
}

void Replay::operator()(const LimitTaps& limit) {
  desktop_.taps.setInstallable(TapLocation::hid, limit.hid);
  desktop_.taps.setInstallable(TapLocation::session, limit.session);
}

void Replay::operator()(const WriteSetting& write) {
  if (!services_) {
    ValueMap stored = desktop_.preferences.load(kSettingsDomain);
    stored.erase(write.key);
    if (write.value) stored.emplace(write.key, *write.value);
    desktop_.preferences.store(kSettingsDomain, stored);
    return;
  }
  if (!write.value) {
    services_->defaults.remove(write.key);
    return;
  }
  // The lists are written as the settings window writes them: cleaned, and with word of it.
  const auto list = listOf(*write.value);
  if (list && write.key == "ignoredApps") {
    services_->config.setIgnoredApps(*list);
  } else if (list && write.key == "keystrokeZoomApps") {
    services_->config.setKeystrokeZoomApps(*list);
  } else {
    services_->defaults.set(write.key, *write.value);
  }
}

void Replay::operator()(const ShowPractice& show) {
  practice_ = show.rectangle;
  if (services_) services_->practice.set(practice_);
}

// The permission's watcher tells of a change at once here: how soon it notices is not recognition's
// business.
void Replay::operator()(const GiveTrust& give) {
  const bool changed = desktop_.trust.trusted() != give.trusted;
  desktop_.trust.setTrusted(give.trusted);
  if (!changed || !services_) return;
  if (give.trusted) {
    services_->controller.start();
  } else {
    services_->controller.stop();
  }
}

void Replay::operator()(const WriteSystemPreference& write) {
  desktop_.systemPreferences.set(write.domain, write.key, write.value);
}

void Replay::operator()(const SendFrame& frame) {
  static constexpr MTTouch kNoContact{};
  const auto count = static_cast<std::int32_t>(frame.touches.size());
  desktop_.mainQueue.runElsewhere([&] {
    if (frame.null) {
      // A library that claims a contact and shows none.
      desktop_.multitouch.deliver(frame.device, nullptr, 1);
    } else {
      desktop_.multitouch.deliver(frame.device, count > 0 ? frame.touches.data() : &kNoContact,
                                  count);
    }
  });
}

void Replay::operator()(const SendMouse& send) {
  const auto out = desktop_.taps.send(send.event, send.origin);
  print(clickLine(now(), send.event, out));
}

void Replay::operator()(const DisableTap& disable) {
  desktop_.taps.disable(disable.location, disable.reason, disable.revives);
}

void Replay::operator()(const ConnectDevice& connect) {
  desktop_.multitouch.setPresent(connect.device, connect.attached);
  if (connect.attached) {
    desktop_.notices.deviceAttached();
  } else {
    desktop_.notices.deviceDetached();
  }
}

void Replay::operator()(const TellMoment& tell) {
  switch (tell.moment) {
    case SystemMoment::sleep:
      desktop_.notices.willSleep();
      break;
    case SystemMoment::wake:
      desktop_.notices.didWake();
      break;
    case SystemMoment::display:
      // Displays are the one thing that systems tell of on any thread.
      desktop_.mainQueue.runElsewhere([this] { desktop_.notices.displayReconfigured(); });
      break;
  }
}

void Replay::operator()(const Control& control) {
  if (!services_) return;
  switch (control.step) {
    case ControllerStep::stop:
      services_->controller.stop();
      break;
    case ControllerStep::start:
      services_->controller.start();
      break;
  }
}

}  // namespace

std::vector<std::string> replay(const Scenario& scenario, const ReplayOptions& options,
                                const PrintLine& print) {
  Replay run(scenario, options, print);
  run.play();
  return run.end();
}

}  // namespace velotap::lab
