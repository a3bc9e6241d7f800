#include "adapters/updates/feed_updates.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adapters/updates/update_feed.hpp"

namespace velotap {
namespace {

constexpr const char* kAutomatic = "checksAutomatically";
constexpr const char* kLastCheck = "lastCheck";
constexpr int kOpenPage = 0;
constexpr std::string_view kPlace = "%@";

// A text of the tables with its places filled one after the other.
std::string filled(std::string text, std::initializer_list<std::string_view> values) {
  std::size_t from = 0;
  for (const std::string_view value : values) {
    const std::size_t at = text.find(kPlace, from);
    if (at == std::string::npos) break;
    text.replace(at, kPlace.size(), value);
    from = at + value.size();
  }
  return text;
}

}  // namespace

FeedUpdates::FeedUpdates(UpdateSource source, Effects effects, const Clock& clock, MainQueue& queue,
                         PreferencesStorage& storage, Alerts& alerts, UrlOpener& urls)
    : source_(std::move(source)),
      effects_(std::move(effects)),
      clock_(clock),
      queue_(queue),
      storage_(storage),
      alerts_(alerts),
      urls_(urls) {}

FeedUpdates::~FeedUpdates() {
  if (timer_ != nullptr) timer_->cancel();
}

std::optional<std::string> FeedUpdates::unavailableReason() const {
  if (!source_.feed.starts_with("https://")) return "updates.unavailable.feed";
  if (!isUpdateKey(source_.key)) return "updates.unavailable.key";
  return std::nullopt;
}

void FeedUpdates::start() {
  started_ = true;
  arrangeCheck();
}

Observation FeedUpdates::observe(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

double FeedUpdates::secondsSinceEpoch() const {
  return std::chrono::duration<double>(clock_.date().time_since_epoch()).count();
}

bool FeedUpdates::checksAutomatically() const {
  if (unavailableReason()) return false;
  const ValueMap stored = storage_.load(kDomain);
  const auto found = stored.find(kAutomatic);
  const bool* const on = found == stored.end() ? nullptr : found->second.boolean();
  return on == nullptr || *on;
}

void FeedUpdates::setChecksAutomatically(bool on) {
  store(kAutomatic, on);
  arrangeCheck();
  changes_.notify();
}

std::optional<std::chrono::system_clock::time_point> FeedUpdates::lastCheck() const {
  const ValueMap stored = storage_.load(kDomain);
  const auto found = stored.find(kLastCheck);
  const double* const seconds = found == stored.end() ? nullptr : found->second.real();
  // Beyond this no clock of ours can say it.
  if (seconds == nullptr || !(std::abs(*seconds) < 1e9 * 9)) return std::nullopt;
  return std::chrono::system_clock::time_point(
      std::chrono::duration_cast<std::chrono::system_clock::duration>(
          std::chrono::duration<double>(*seconds)));
}

void FeedUpdates::store(const char* key, Value value) {
  ValueMap stored = storage_.load(kDomain);
  stored.insert_or_assign(key, std::move(value));
  storage_.store(kDomain, stored);
}

void FeedUpdates::arrangeCheck() {
  if (timer_ != nullptr) std::exchange(timer_, nullptr)->cancel();
  if (!started_ || !checksAutomatically()) return;
  double wait = kSecondsAfterLaunch;
  if (const auto last = lastCheck()) {
    const double since =
        secondsSinceEpoch() - std::chrono::duration<double>(last->time_since_epoch()).count();
    // A clock that was set back must not put the next check off for years.
    if (since >= 0) wait = std::max(wait, kSecondsBetweenChecks - since);
  }
  timer_ = queue_.asyncAfter(wait, [this] {
    timer_ = nullptr;
    check(false);
  });
}

void FeedUpdates::checkForUpdates() {
  if (!unavailableReason()) check(true);
}

void FeedUpdates::check(bool asked) {
  asked_ = asked_ || asked;
  if (std::exchange(checking_, true)) return;
  effects_.fetch(source_.feed,
                 [this, alive = std::weak_ptr(alive_)](const std::optional<std::string>& feed) {
                   if (!alive.expired()) answered(feed);
                 });
}

void FeedUpdates::answered(const std::optional<std::string>& feed) {
  checking_ = false;
  const bool asked = std::exchange(asked_, false);
  const auto announced = feed ? readUpdateFeed(*feed, source_.key) : std::nullopt;
  if (!announced) {
    // Without an answer the next try by the clock is as far away as after one.
    if (timer_ == nullptr && started_ && checksAutomatically()) {
      timer_ = queue_.asyncAfter(kSecondsBetweenChecks, [this] {
        timer_ = nullptr;
        check(false);
      });
    }
    if (asked) tell("updates.failed.title", effects_.localize("updates.failed.body"));
    return;
  }
  store(kLastCheck, secondsSinceEpoch());
  arrangeCheck();
  changes_.notify();
  if (isNewerVersion(announced->version, source_.version)) {
    // By itself it says so once in a run; who asks is always told.
    if (asked || told_ != announced->version) offer(announced->version, announced->page);
  } else if (asked) {
    tell("updates.current.title",
         filled(effects_.localize("updates.current.body"), {source_.version}));
  }
}

void FeedUpdates::offer(const std::string& version, const std::string& page) {
  told_ = version;
  const auto& text = effects_.localize;
  const int button = alerts_.runModal(
      {.message = text("updates.available.title"),
       .informativeText = filled(text("updates.available.body"), {version, source_.version}),
       .buttons = {text("Open Download Page"), text("Later")}});
  if (button == kOpenPage) urls_.open(page, {});
}

void FeedUpdates::tell(const char* titleKey, std::string body) {
  alerts_.runModal({.message = effects_.localize(titleKey),
                    .informativeText = std::move(body),
                    .buttons = {effects_.localize("OK")}});
}

}  // namespace velotap
