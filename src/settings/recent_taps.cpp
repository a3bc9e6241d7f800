#include "settings/recent_taps.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

#include "settings/device_cards.hpp"

namespace velotap {
namespace {

using Outcome = TapActivity::Outcome;

struct Reason {
  std::string_view name;
  Outcome outcome;
  std::string_view titleKey;
};
constexpr std::array kReasons = {Reason{"tooLong", Outcome::tooLong, "polish.taps.long"},
                                 Reason{"moved", Outcome::moved, "polish.taps.moved"},
                                 Reason{"tooSoon", Outcome::tooSoon, "polish.taps.soon"}};

std::string milliseconds(double seconds, const Texts& texts) {
  return texts.format().milliseconds(std::llround(seconds * 1000));
}

std::string outcomeText(const TapActivity& tap, const Texts& texts) {
  const RegionalFormat& format = texts.format();
  const std::string duration = milliseconds(tap.duration, texts);
  const std::string drift = format.number(tap.drift, 3);
  switch (tap.outcome) {
    case Outcome::click:
      break;
    case Outcome::tooLong:
      return texts("Held too long: %@ (limit %@)",
                   {duration, milliseconds(tap.maxDuration, texts)});
    case Outcome::moved:
      return texts("Moved too much: %@ (limit %@)", {drift, format.number(tap.maxDrift, 2)});
    case Outcome::tooSoon:
      return texts("Ignored: too soon after the previous middle click");
  }
  return texts("Middle click (%@)", {duration + " · " + drift});
}

std::int64_t secondsOf(std::chrono::system_clock::time_point date) {
  return std::chrono::floor<std::chrono::seconds>(date.time_since_epoch()).count();
}

std::string_view deviceKey(DeviceClass deviceClass) {
  return gestureDeviceTitleKey(deviceClass == DeviceClass::magicMouse ? GestureDevice::mouse
                                                                      : GestureDevice::trackpad);
}

std::string number(std::size_t count, const Texts& texts) {
  return texts.format().wholeNumber(static_cast<std::int64_t>(count));
}

std::size_t countOf(const std::vector<TapActivity>& taps, Outcome outcome) {
  return static_cast<std::size_t>(
      std::count_if(taps.begin(), taps.end(),
                    [outcome](const TapActivity& tap) { return tap.outcome == outcome; }));
}

void addChoices(const Texts& texts, RecentTapsView& view) {
  view.deviceTitle = texts("Device");
  view.deviceChoices = {{"all", texts("polish.taps.all.devices")},
                        {"trackpad", texts("Trackpad")},
                        {"mouse", texts("Magic Mouse")}};
  view.outcomeTitle = texts("design.tap.outcomes");
  view.outcomeChoices = {{"all", texts("design.all.taps")},
                         {"accepted", texts("design.accepted")},
                         {"rejected", texts("design.near.misses")}};
  view.orderTitle = texts("polish.taps.order");
  view.orderChoices = {{true, texts("polish.taps.newest")}, {false, texts("polish.taps.oldest")}};
}

void addCounts(const std::vector<TapActivity>& taps, const Texts& texts, RecentTapsView& view) {
  const std::size_t accepted = countOf(taps, Outcome::click);
  view.shownCount =
      texts("tuning.taps.shown", {number(view.rows.size(), texts), number(taps.size(), texts)});
  view.summary =
      texts("design.tap.summary", {number(accepted, texts), number(taps.size() - accepted, texts)});
  view.reasonsTitle = texts("polish.taps.reasons");
  if (taps.empty()) return;
  view.reasonChoices.emplace_back("all", texts("design.all.taps"));
  for (const Reason& reason : kReasons) {
    view.reasonChoices.emplace_back(
        reason.name, texts(reason.titleKey, {number(countOf(taps, reason.outcome), texts)}));
  }
  view.reasonsNote = texts("polish.taps.reasons.note");
}

}  // namespace

int TapActivityFilter::activeCount() const {
  return int{device != "all"} + int{!newestFirst} + int{outcome != "all"};
}

std::vector<TapActivity> filteredTapActivity(std::vector<TapActivity> taps, std::string_view device,
                                             std::string_view outcome, bool newestFirst) {
  std::erase_if(taps, [=](const TapActivity& tap) {
    const bool isMouse = tap.deviceClass == DeviceClass::magicMouse;
    const bool isAccepted = tap.outcome == Outcome::click;
    return (device != "all" && (device == "mouse") != isMouse) ||
           (outcome != "all" && (outcome == "accepted") != isAccepted);
  });
  std::sort(taps.begin(), taps.end(), [=](const TapActivity& a, const TapActivity& b) {
    const auto& first = newestFirst ? b : a;
    const auto& second = newestFirst ? a : b;
    return first.date != second.date ? first.date < second.date : first.id < second.id;
  });
  return taps;
}

std::vector<TapActivity> tapsOfReason(std::vector<TapActivity> taps, std::string_view reason) {
  const auto* const wanted =
      std::find_if(kReasons.begin(), kReasons.end(),
                   [reason](const Reason& each) { return each.name == reason; });
  if (wanted != kReasons.end()) {
    std::erase_if(taps,
                  [wanted](const TapActivity& tap) { return tap.outcome != wanted->outcome; });
  }
  return taps;
}

TapActivityRow tapActivityRow(const TapActivity& tap, const TuningSnapshot& current,
                              const Texts& texts) {
  TapActivityRow row{.id = tap.id,
                     .device = texts(deviceKey(tap.deviceClass)),
                     .fingers = texts("tap.fingers", {texts.format().wholeNumber(tap.fingers)}),
                     .time = texts.format().timeOfDay(secondsOf(tap.date)),
                     .outcome = outcomeText(tap, texts),
                     .accepted = tap.outcome == Outcome::click,
                     .suggestion = tapLimitSuggestion(tap, current),
                     .suggestionTitle = {},
                     .suggestionContext = {}};
  if (row.suggestion) {
    row.suggestionTitle = row.suggestion->title(texts);
    row.suggestionContext = row.suggestion->context(texts);
  }
  return row;
}

RecentTapsView recentTapsView(const std::vector<TapActivity>& taps, const TapActivityFilter& filter,
                              bool paused, const TuningSnapshot& current, const Texts& texts) {
  RecentTapsView view;
  view.title = texts("Recent taps");
  view.liveCaption = texts("tuning.live.caption");
  view.recentCaption = texts("tuning.recent.caption");
  view.pauseTitle = texts("polish.taps.pause");
  if (paused) view.pausedNote = texts("polish.taps.paused.note");
  view.filters = settingsFilterDisclosure(filter.activeCount(), texts);
  addChoices(texts, view);
  for (const TapActivity& tap :
       tapsOfReason(filteredTapActivity(taps, filter.device, filter.outcome, filter.newestFirst),
                    filter.reason)) {
    view.rows.push_back(tapActivityRow(tap, current, texts));
  }
  addCounts(taps, texts, view);
  if (view.rows.size() > 1) {
    view.moreTitle = texts("polish.taps.more", {number(view.rows.size() - 1, texts)});
  }
  if (view.rows.empty()) view.empty = texts(taps.empty() ? "No taps yet" : "design.no.tap.results");
  view.clearTitle = texts("Clear");
  view.canClear = !taps.empty();
  return view;
}

}  // namespace velotap
