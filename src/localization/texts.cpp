#include "localization/texts.hpp"

namespace velotap {
namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;

}  // namespace

std::string Texts::operator()(std::string_view key) const {
  return bundle_->localizedString(key);
}

std::string Texts::operator()(std::string_view key, const FormatArguments& arguments) const {
  return formatText(bundle_->localizedString(key), arguments);
}

std::string Texts::counted(std::string_view key, std::int64_t count) const {
  // The grammar is that of the text, not of the region.
  const bool singular = RegionalFormat::isSingular((*this)("language.code"), count);
  return (*this)(std::string(key) + (singular ? ".one" : ".other"), {format_.wholeNumber(count)});
}

std::string Texts::relative(std::int64_t moment, std::int64_t now) const {
  const std::int64_t seconds = now - moment;
  // A clock that was set back must not make a check happen in the future.
  if (seconds < kMinute) return (*this)("relative.now");
  if (seconds < kHour) return counted("relative.minutes", seconds / kMinute);
  const std::int64_t days = format_.calendarDay(now) - format_.calendarDay(moment);
  if (days <= 0) return counted("relative.hours", seconds / kHour);
  if (days == 1) return (*this)("relative.yesterday");
  if (days < 7) return counted("relative.days", days);
  if (days < 14) return (*this)("relative.last.week");
  if (days < 30) return counted("relative.weeks", days / 7);
  if (days < 60) return (*this)("relative.last.month");
  if (days < 365) return counted("relative.months", days / 30);
  if (days < 730) return (*this)("relative.last.year");
  return counted("relative.years", days / 365);
}

}  // namespace velotap
