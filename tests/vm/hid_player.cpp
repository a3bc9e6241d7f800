// Plays a touch script on one emulated device:
//
//   hid_player KIND [--name=TEXT] [--phys=TEXT] [--uniq=TEXT] < script
//
// KIND is one of magic-mouse-1, magic-mouse-2, magic-trackpad-1, magic-trackpad-2, plain-mouse. The
// language is in touch_script.hpp. Lines are carried out as they arrive, so the script may also
// come through a pipe that somebody holds open. The device lives until the end of the input,
// `destroy`, or the player's death. Prints one line for each `ready` and `say`, with the monotonic
// time.
#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "guest_io.hpp"
#include "hid_device.hpp"
#include "hid_hand.hpp"
#include "touch_script.hpp"
#include "uhid_device.hpp"

namespace velotap::vm {
namespace {

constexpr std::int64_t kReadyLimit = 15 * kNanosecondsPerSecond;

void report(const char* what, const std::string& detail, std::int64_t time) {
  std::printf("%.6f %s %s\n", secondsOf(time), what, detail.c_str());
  std::fflush(stdout);
}

/// Standard input, line by line, without blocking inside the reading.
class LineSource {
 public:
  [[nodiscard]] bool hasLine() const noexcept {
    return ended_ ? !buffer_.empty() : buffer_.find('\n') != std::string::npos;
  }
  [[nodiscard]] bool ended() const noexcept { return ended_; }
  void readSome() {
    std::array<char, 4096> part{};
    const ssize_t size = read(STDIN_FILENO, part.data(), part.size());
    if (size > 0) {
      buffer_.append(part.data(), static_cast<std::size_t>(size));
    } else if (size == 0 || errno != EINTR) {
      ended_ = true;
    }
  }
  [[nodiscard]] std::string takeLine() {
    const std::size_t end = buffer_.find('\n');
    std::string line = buffer_.substr(0, end);
    buffer_.erase(0, end == std::string::npos ? end : end + 1);
    return line;
  }

 private:
  std::string buffer_;
  bool ended_ = false;
};

class Player {
 public:
  Player(const HidModel& model, UhidDevice::Identity identity)
      : model_(model), device_(model, std::move(identity)), hand_(model) {}

  /// The exit status: 0, or 2 after a message about a line that cannot be carried out.
  int run();

 private:
  std::optional<std::string> nextLine();
  void serveUntil(std::int64_t time);
  void pollOnce(int timeoutMilliseconds, bool input);
  std::string execute(const Statement& statement);
  std::string awaitReady();
  std::string repeat(const std::vector<int>& numbers);
  void sendFrame(std::optional<int> gap);
  void pass(int milliseconds);

  const HidModel& model_;
  UhidDevice device_;
  HidHand hand_;
  LineSource input_;
  std::vector<int> cadence_{11};
  std::size_t cadenceStep_ = 0;
  std::int64_t due_ = monotonicNanoseconds();
  std::optional<std::string> mark_;
  bool destroyed_ = false;
};

int Player::run() {
  int number = 0;
  while (const std::optional<std::string> line = nextLine()) {
    ++number;
    const ParsedLine parsed = parseLine(*line);
    std::string problem = parsed.error;
    if (parsed.statement) problem = execute(*parsed.statement);
    if (!problem.empty()) {
      std::fprintf(stderr, "hid_player: line %d: %s\n", number, problem.c_str());
      return 2;
    }
  }
  return 0;
}

std::optional<std::string> Player::nextLine() {
  while (!input_.hasLine()) {
    if (input_.ended()) return std::nullopt;
    pollOnce(-1, true);
    // Time that the input took is nobody's gap. Lateness of our own, on a slow machine, is made up
    // for by the next gap, so that a script keeps its length.
    due_ = std::max(due_, monotonicNanoseconds());
  }
  return input_.takeLine();
}

void Player::pollOnce(int timeoutMilliseconds, bool input) {
  const auto [requests, notices] = device_.descriptors();
  std::array<pollfd, 3> polled{
      {{requests, POLLIN, 0}, {notices, POLLIN, 0}, {input ? STDIN_FILENO : -1, POLLIN, 0}}};
  if (poll(polled.data(), polled.size(), timeoutMilliseconds) <= 0) return;
  device_.serve();
  if (polled[2].revents != 0) input_.readSome();
}

void Player::serveUntil(std::int64_t time) {
  for (;;) {
    const std::int64_t left = time - monotonicNanoseconds();
    if (left <= 0) return;
    if (left < kNanosecondsPerMillisecond) {
      const timespec rest{0, static_cast<long>(left)};
      nanosleep(&rest, nullptr);
      return;
    }
    pollOnce(static_cast<int>(left / kNanosecondsPerMillisecond), false);
  }
}

std::string Player::execute(const Statement& statement) {
  const auto& numbers = statement.numbers;
  switch (statement.verb) {
    case Verb::ready:
      return awaitReady();
    case Verb::touch:
    case Verb::move:
    case Verb::lift:
    case Verb::button:
    case Verb::motion:
    case Verb::wheel:
    case Verb::tremor:
      return hand_.apply(statement);
    case Verb::frame:
      if (destroyed_) return "the device has been destroyed";
      sendFrame(numbers.empty() ? std::nullopt : std::optional(numbers[0]));
      return {};
    case Verb::repeat:
      if (destroyed_) return "the device has been destroyed";
      return repeat(numbers);
    case Verb::cadence:
      cadence_ = numbers;
      cadenceStep_ = 0;
      return {};
    case Verb::wait:
      pass(numbers[0]);
      return {};
    case Verb::say:
      report("say", statement.text, monotonicNanoseconds());
      return {};
    case Verb::mark:
      mark_ = statement.text;
      return {};
    case Verb::destroy:
      device_.destroy();
      destroyed_ = true;
      return {};
    case Verb::hold:
      for (;;) pollOnce(-1, false);
  }
  return {};
}

std::string Player::awaitReady() {
  const std::int64_t limit = monotonicNanoseconds() + kReadyLimit;
  while (!device_.ready()) {
    const std::int64_t left = limit - monotonicNanoseconds();
    if (left <= 0) return "the driver has not finished setting the device up";
    pollOnce(static_cast<int>(left / kNanosecondsPerMillisecond) + 1, false);
  }
  due_ = std::max(due_, monotonicNanoseconds());
  report("ready", device_.node(), monotonicNanoseconds());
  return {};
}

std::string Player::repeat(const std::vector<int>& numbers) {
  const std::optional<int> gap = numbers.size() == 4 ? std::optional(numbers[3]) : std::nullopt;
  for (int i = 0; i < numbers[0]; ++i) {
    if (std::string problem = hand_.moveAll(numbers[1], numbers[2]); !problem.empty()) {
      return problem;
    }
    sendFrame(gap);
  }
  return {};
}

void Player::sendFrame(std::optional<int> gap) {
  const auto stamp = static_cast<std::uint32_t>(due_ / kNanosecondsPerMillisecond);
  const std::vector<std::uint8_t> bytes = encodeReport(model_.kind, hand_.takeFrame(stamp));
  const std::int64_t sent = monotonicNanoseconds();
  device_.send(bytes);
  // Printed afterwards, so that the printing delays nobody who reacts to the frame.
  if (mark_) report("mark", *mark_, sent);
  mark_.reset();
  if (!gap) gap = cadence_[cadenceStep_++ % cadence_.size()];
  pass(*gap);
}

void Player::pass(int milliseconds) {
  due_ += milliseconds * kNanosecondsPerMillisecond;
  serveUntil(due_);
}

/// The text after PREFIX; nothing when `argument` does not start with it.
std::optional<std::string> optionValue(std::string_view argument, std::string_view prefix) {
  if (argument.substr(0, prefix.size()) != prefix) return std::nullopt;
  return std::string(argument.substr(prefix.size()));
}

/// Unlike any other player's at the same time, so that devices can be told apart.
std::string ownAddress() {
  const auto pid = static_cast<unsigned>(getpid());
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "04:4b:ed:%02x:%02x:%02x", (pid >> 16) & 0xffU,
                (pid >> 8) & 0xffU, pid & 0xffU);
  return text.data();
}

int usage() {
  std::fputs("usage: hid_player KIND [--name=TEXT] [--phys=TEXT] [--uniq=TEXT]\nkinds:", stderr);
  for (const HidModel& model : hidModels()) {
    std::fprintf(stderr, " %.*s", static_cast<int>(model.option.size()), model.option.data());
  }
  std::fputc('\n', stderr);
  return 2;
}

int play(std::span<char*> arguments) {
  if (arguments.empty()) return usage();
  const std::optional<HidKind> kind = hidKindFromOption(arguments[0]);
  if (!kind) return usage();
  const HidModel& model = hidModel(*kind);
  UhidDevice::Identity identity{
      .name = std::string(model.product), .phys = "a0:b1:c2:d3:e4:f5", .uniq = ownAddress()};
  for (char* argument : arguments.subspan(1)) {
    if (const auto name = optionValue(argument, "--name=")) {
      identity.name = *name;
    } else if (const auto phys = optionValue(argument, "--phys=")) {
      identity.phys = *phys;
    } else if (const auto uniq = optionValue(argument, "--uniq=")) {
      identity.uniq = *uniq;
    } else {
      return usage();
    }
  }
  return Player(model, std::move(identity)).run();
}

}  // namespace
}  // namespace velotap::vm

int main(int argc, char** argv) {
  try {
    return velotap::vm::play(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "hid_player: %s\n", error.what());
    return 1;
  }
}
