#include "lab/touches/touch_commands.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <variant>

#include "adapters/linux/devices/udev_devices.hpp"
#include "adapters/linux/evdev/touch_frames.hpp"
#include "adapters/linux/multitouch/surface_node.hpp"
#include "adapters/linux/recordings/play_recording.hpp"
#include "adapters/linux/recordings/recording_text.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "lab/replay_command.hpp"
#include "lab/touches/scenario_text.hpp"
#include "lab/touches/touch_story.hpp"

namespace velotap::lab {
namespace {

constexpr double kBeforeFirstTouch = 0.1;

double seconds(const input_event& event) {
  return static_cast<double>(event.input_event_sec) +
         static_cast<double>(event.input_event_usec) * 1e-6;
}

std::optional<EvdevRecording> readRecording(std::string_view path, std::ostream& errors) {
  // A stream can open a folder, and throws when it is read.
  std::error_code unknown;
  if (std::filesystem::is_directory(path, unknown)) {
    errors << "velotap-lab: " << path << ": " << std::strerror(EISDIR) << '\n';
    return std::nullopt;
  }
  std::ifstream file{std::string(path), std::ios::binary};
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad()) {
    errors << "velotap-lab: " << path << ": " << std::strerror(errno) << '\n';
    return std::nullopt;
  }
  RecordingResult result = parseRecording(text);
  if (const auto* error = std::get_if<RecordingError>(&result)) {
    errors << path << ':' << error->line << ": " << error->message << '\n';
    return std::nullopt;
  }
  return std::get<EvdevRecording>(std::move(result));
}

std::string nodeOf(std::string_view argument) {
  const auto index = number<std::size_t>(argument);
  if (!index) return std::string(argument);
  const auto nodes = surfaceNodes();
  return *index < nodes.size() ? nodes[*index] : std::string();
}

// Frames of one device, written as they come.
class LiveScenario {
 public:
  LiveScenario(SurfaceNode& node, std::ostream& out)
      : node_(node),
        out_(out),
        model_(surfaceModel(node.description())),
        reader_(model_),
        frames_(model_) {}

  void begin() {
    out_ << scenarioHead(scenarioDeviceName(model_), model_, node_.description().name);
    node_.synchronise(reader_, model_.slots);
    write(0, frames_.first(reader_.contacts(), 0).touches);
  }

  /// Waits for events; false when the device is gone or was interrupted.
  bool readFrames() {
    std::array<input_event, 64> events;
    const std::size_t count = node_.read(events);
    for (std::size_t i = 0; i < count; ++i) {
      // What is fetched after a loss is newer than the rest of these events.
      if (handle(events[i]) == ContactReader::Step::resynchronise) break;
    }
    return count > 0;
  }

 private:
  ContactReader::Step handle(const input_event& event) {
    const auto step = reader_.handle(event);
    if (step == ContactReader::Step::nothing) return step;
    if (step == ContactReader::Step::resynchronise) node_.synchronise(reader_, model_.slots);
    const double time = seconds(event);
    if (!start_) start_ = time - kBeforeFirstTouch;
    if (const auto frame = frames_.next(reader_.contacts(), time)) {
      write(time - *start_, frame->touches);
    }
    return step;
  }

  void write(double time, std::span<const MTTouch> touches) {
    out_ << scenarioFrame(scenarioDeviceName(model_), time, touches) << std::flush;
  }

  SurfaceNode& node_;
  std::ostream& out_;
  SurfaceModel model_;
  ContactReader reader_;
  TouchFrames frames_;
  std::optional<double> start_;
};

// Waits for an interrupt on a thread of its own and then ends the node's reading.
class InterruptsEndReading {
 public:
  explicit InterruptsEndReading(SurfaceNode& node) : node_(node) {
    sigset_t interrupts;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    sigaddset(&interrupts, SIGTERM);
    sigprocmask(SIG_BLOCK, &interrupts, nullptr);
    signals_ = Descriptor(::signalfd(-1, &interrupts, SFD_CLOEXEC));
    thread_ = std::thread([this] { wait(); });
  }
  ~InterruptsEndReading() {
    ::eventfd_write(over_.get(), 1);
    thread_.join();
  }
  InterruptsEndReading(const InterruptsEndReading&) = delete;
  InterruptsEndReading& operator=(const InterruptsEndReading&) = delete;
  [[nodiscard]] bool interrupted() const { return interrupted_; }

 private:
  void wait() {
    std::array<pollfd, 2> waiting = {{{.fd = signals_.get(), .events = POLLIN, .revents = 0},
                                      {.fd = over_.get(), .events = POLLIN, .revents = 0}}};
    while (::poll(waiting.data(), waiting.size(), -1) < 0) {
    }
    if (waiting[1].revents != 0) return;
    interrupted_ = true;
    node_.interrupt();
  }

  SurfaceNode& node_;
  Descriptor signals_;
  Descriptor over_{::eventfd(0, EFD_CLOEXEC)};
  std::atomic<bool> interrupted_{false};
  std::thread thread_;
};

bool wantsHelp(const std::vector<std::string_view>& arguments) {
  return arguments.size() == 1 && arguments[0] == "--help";
}

}  // namespace

int runImportCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors) {
  constexpr std::string_view kUsage =
      "usage: velotap-lab import FILE\n\n"
      "Turns what evemu-record, evtest or libinput record wrote into a scenario.\n";
  if (wantsHelp(arguments)) {
    out << kUsage;
    return kExitGood;
  }
  if (arguments.size() != 1) {
    errors << kUsage;
    return kExitUsage;
  }
  const auto recording = readRecording(arguments[0], errors);
  if (!recording) return kExitUsage;
  const PlayedRecording played = playRecording(*recording);
  const std::string_view device = scenarioDeviceName(played.model);
  out << scenarioHead(device, played.model, played.name);
  bool first = true;
  for (const PlayedFrame& frame : played.frames) {
    out << scenarioFrame(device, first ? 0 : frame.time + kBeforeFirstTouch, frame.touches);
    first = false;
  }
  return out.flush() ? kExitGood : kExitFailed;
}

int runRecordCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors) {
  constexpr std::string_view kUsage =
      "usage: velotap-lab record DEVICE\n\n"
      "Writes what fingers do on a device as a scenario until it is interrupted. DEVICE is an\n"
      "event node such as /dev/input/event5, or a number in the list of `velotap --devices`.\n";
  if (wantsHelp(arguments)) {
    out << kUsage;
    return kExitGood;
  }
  if (arguments.size() != 1) {
    errors << kUsage;
    return kExitUsage;
  }
  const std::string path = nodeOf(arguments[0]);
  const auto node = path.empty() ? nullptr : makeEvdevNode(path);
  if (!node || !node->open()) {
    errors << "velotap-lab: " << arguments[0] << " is no multitouch device that may be read\n";
    return kExitFailed;
  }
  const InterruptsEndReading interrupts(*node);
  LiveScenario scenario(*node, out);
  scenario.begin();
  while (out && scenario.readFrames()) {
  }
  if (out && !interrupts.interrupted()) errors << "velotap-lab: the device is gone\n";
  return out.flush() ? kExitGood : kExitFailed;
}

int runDemoCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                   std::ostream& errors) {
  constexpr std::string_view kUsage =
      "usage: velotap-lab demo FILE...\n\n"
      "Plays recordings through the real decoder and recogniser, and tells touch by touch what\n"
      "was recognised and posted, and why a touch was refused. Every tap and the swipe are\n"
      "switched on.\n";
  if (wantsHelp(arguments)) {
    out << kUsage;
    return kExitGood;
  }
  if (arguments.empty()) {
    errors << kUsage;
    return kExitUsage;
  }
  const ValueMap settings = {{"padTap4", true}, {"mouseSwipe3Nav", true}, {"mouseRotate", true}};
  for (const std::string_view path : arguments) {
    const auto recording = readRecording(path, errors);
    if (!recording) return kExitUsage;
    const PlayedRecording played = playRecording(*recording);
    out << std::filesystem::path(path).stem().string() << " (" << played.name << ")\n";
    for (const std::string& line : tellTouches(played, settings)) out << line << '\n';
  }
  return out.flush() ? kExitGood : kExitFailed;
}

}  // namespace velotap::lab
