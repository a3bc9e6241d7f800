// The list of recent taps: which are shown, in which order, and what each row says.
//
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gestures/tap_activity_log.hpp"
#include "localization/texts.hpp"
#include "settings/filter_disclosure.hpp"
#include "settings/tuning_values.hpp"

namespace velotap {

struct TapActivityFilter {
  std::string device = "all";   ///< "all", "mouse"; any other value selects trackpads
  std::string outcome = "all";  ///< "all", "accepted"; any other value selects refused taps
  bool newestFirst = true;
  /// "all", "tooLong", "moved", "tooSoon": the refused taps of one reason. Chosen where the reasons
  /// are counted, and seen there, so the disclosure of the others does not count it.
  std::string reason = "all";

  [[nodiscard]] int activeCount() const;
};

/// Equal dates are ordered by their numbers, in the same direction.
[[nodiscard]] std::vector<TapActivity> filteredTapActivity(std::vector<TapActivity> taps,
                                                           std::string_view device,
                                                           std::string_view outcome,
                                                           bool newestFirst);

/// Any value that names no reason keeps everything.
[[nodiscard]] std::vector<TapActivity> tapsOfReason(std::vector<TapActivity> taps,
                                                    std::string_view reason);

struct TapActivityRow {
  int id = 0;
  std::string device;
  std::string fingers;
  std::string time;
  std::string outcome;
  bool accepted = false;
  std::optional<TapLimitSuggestion> suggestion;
  std::string suggestionTitle;
  std::string suggestionContext;
};

[[nodiscard]] TapActivityRow tapActivityRow(const TapActivity& tap, const TuningSnapshot& current,
                                            const Texts& texts);

struct RecentTapsView {
  std::string title;
  std::string liveCaption;
  std::string recentCaption;
  std::string pauseTitle;
  std::string pausedNote;  ///< empty unless paused
  std::string_view pausedSymbol = "pause.circle";

  SettingsFilterDisclosure filters;
  std::string deviceTitle;
  std::vector<std::pair<std::string_view, std::string>> deviceChoices;
  std::string outcomeTitle;
  std::vector<std::pair<std::string_view, std::string>> outcomeChoices;
  std::string orderTitle;
  std::vector<std::pair<bool, std::string>> orderChoices;  ///< newest first?

  std::string shownCount;
  std::string summary;
  std::string reasonsTitle;
  /// All taps, and each reason with its count; empty while there are no taps.
  std::vector<std::pair<std::string_view, std::string>> reasonChoices;
  std::string reasonsNote;

  std::vector<TapActivityRow> rows;  ///< the first is always shown
  std::string moreTitle;             ///< of the group with all rows but the first; empty without
  std::string empty;                 ///< why there are no rows; empty while there are
  std::string_view emptySymbol = "hand.tap";
  std::string clearTitle;
  bool canClear = false;
};

[[nodiscard]] RecentTapsView recentTapsView(const std::vector<TapActivity>& taps,
                                            const TapActivityFilter& filter, bool paused,
                                            const TuningSnapshot& current, const Texts& texts);

}  // namespace velotap
