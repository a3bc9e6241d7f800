// Small helpers that the readers of recordings share. Pure.
#pragma once

#include <linux/input.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velotap {

/// Larger recordings are hours long; nobody replays those.
inline constexpr std::size_t kLongestRecording = std::size_t{64} << 20;

/// Removes and returns the first line, without its end.
inline std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// Removes and returns the first word.
inline std::string_view takeWord(std::string_view& line) {
  const std::size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos) {
    line = {};
    return {};
  }
  line.remove_prefix(start);
  const std::size_t end = line.find_first_of(" \t");
  const std::string_view word = line.substr(0, end);
  line.remove_prefix(end == std::string_view::npos ? line.size() : end);
  return word;
}

/// The whole word as a number, or nothing.
template <typename T>
std::optional<T> number(std::string_view word, int base = 10) {
  T value{};
  if (word.starts_with('+')) word.remove_prefix(1);
  const auto end = word.data() + word.size();
  const auto parsed = std::from_chars(word.data(), end, value, base);
  if (word.empty() || parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return value;
}

struct EventTime {
  std::int64_t seconds = 0;
  std::int64_t microseconds = 0;
};

/// "12.034567": seconds and microseconds.
inline std::optional<EventTime> eventTime(std::string_view word) {
  const std::size_t dot = word.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  const auto seconds = number<std::int64_t>(word.substr(0, dot));
  const auto microseconds = number<std::int64_t>(word.substr(dot + 1));
  if (!seconds || !microseconds || word.size() - dot != 7 || *seconds < 0) return std::nullopt;
  return EventTime{*seconds, *microseconds};
}

inline input_event makeEvent(EventTime time, std::uint16_t type, std::uint16_t code,
                             std::int32_t value) {
  input_event event{};
  event.input_event_sec = static_cast<decltype(event.input_event_sec)>(time.seconds);
  event.input_event_usec = static_cast<decltype(event.input_event_usec)>(time.microseconds);
  event.type = type;
  event.code = code;
  event.value = value;
  return event;
}

}  // namespace velotap
