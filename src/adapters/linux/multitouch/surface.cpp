#include "adapters/linux/multitouch/surface.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

namespace velotap {
namespace {

constexpr std::size_t kEventsPerRead = 64;

// Pinches, swipes and taps all have at least two fingers down before they mean anything.
constexpr std::size_t kFingersThatMatter = 2;

double seconds(const input_event& event) {
  return static_cast<double>(event.input_event_sec) +
         static_cast<double>(event.input_event_usec) * 1e-6;
}

double monotonicNow() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The surface whose events are being handled on this thread.
thread_local const Surface* runningHere = nullptr;

// A feeding thread may serve one surface after another.
class OnThisThread {
 public:
  explicit OnThisThread(const Surface* surface) noexcept
      : before_(std::exchange(runningHere, surface)) {}
  ~OnThisThread() { runningHere = before_; }
  OnThisThread(const OnThisThread&) = delete;
  OnThisThread& operator=(const OnThisThread&) = delete;

 private:
  const Surface* before_;
};

// A mouse's single finger decides a click by its place, so it is followed there.
bool isTrackpad(const EvdevDevice& device) {
  return device.keys[BTN_TOOL_FINGER];
}

}  // namespace

Surface::Surface(std::shared_ptr<SurfaceNode> node)
    : node_(std::move(node)),
      model_(surfaceModel(node_->description())),
      sleepsThroughOneFinger_(isTrackpad(node_->description()) &&
                              model_.protocol == ContactProtocol::slots),
      reader_(model_),
      frames_(model_) {}

Surface::~Surface() {
  stop();
  if (!onOwnThread()) return;
  // The callback gave back the last reference: nobody is left to wait for this thread.
  thread_.detach();
  node_->close();
}

bool Surface::setCallback(MTFrameCallback callback) {
  MTFrameCallback none = nullptr;
  return callback_.compare_exchange_strong(none, callback);
}

void Surface::removeCallback(MTFrameCallback callback) {
  if (!callback_.compare_exchange_strong(callback, nullptr) || onOwnThread()) return;
  delivering_.wait(true);
}

int Surface::start() {
  stop();
  if (onOwnThread()) return EDEADLK;
  if (!node_->open()) return ENODEV;
  stopping_ = false;
  // Signals belong to the main thread.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_BLOCK, &all, &before);
  thread_ = std::thread([this, keepAlive = weak_from_this().lock()] { run(); });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return 0;
}

void Surface::stop() {
  // A callback cannot wait for its own thread, which ends when the callback returns.
  if (onOwnThread()) {
    stopping_ = true;
    node_->interrupt();  // the callback may be running on a feeder's thread
    return;
  }
  if (!thread_.joinable()) return;
  stopping_ = true;
  node_->interrupt();
  finish();
}

// The node stays open until its thread is known to be over: closing it there could pull the
// descriptor from under an `interrupt` that comes at the same moment.
void Surface::finish() {
  thread_.join();
  {
    // Whoever feeds is either done or will find that it is over.
    const std::lock_guard guard(stream_);
    running_ = false;
  }
  node_->close();
}

bool Surface::onOwnThread() const noexcept {
  return runningHere == this;
}

void Surface::run() {
  runningHere = this;
  begin();
  while (!stopping_ && readFrames()) {
  }
  const std::lock_guard guard(stream_);
  running_ = false;
  if (!stopping_) vanish();
}

void Surface::begin() {
  const std::lock_guard guard(stream_);
  running_ = true;
  source_ = Source::node;
  // Listeners wait for an empty frame before they believe in a touch, and a device at rest would
  // never send one.
  reader_.clear();
  attention_ = SurfaceNode::Attention::everything;
  node_->synchronise(reader_, model_.slots);
  lastTime_ = monotonicNow();
  deliver(frames_.first(reader_.contacts(), lastTime_));
  if (sleepsThroughOneFinger_ && reader_.contacts().size() < kFingersThatMatter) {
    payAttention(SurfaceNode::Attention::landingAndLifting);
  }
}

bool Surface::readFrames() {
  std::array<input_event, kEventsPerRead> events;
  const std::size_t count = node_->read(events);
  if (count == 0) return false;
  const std::lock_guard guard(stream_);
  if (source_ != Source::node) {
    // The node speaks again, and nobody knows what was missed in between.
    catchUp(Source::node);
  } else {
    takeEvents({events.data(), count});
  }
  return true;
}

void Surface::feed(std::span<const input_event> events) {
  const OnThisThread here(this);
  const std::lock_guard guard(stream_);
  if (!running_ || stopping_) return;
  if (source_ != Source::feeder) catchUp(Source::feeder);
  takeEvents(events);
}

void Surface::catchUp(Source source) {
  source_ = source;
  fetchTruth();
  const RawContacts contacts = reader_.contacts();
  if (const auto frame = frames_.next(contacts, lastTime_)) deliver(*frame);
  if (!sleepsThroughOneFinger_) return;
  const bool awake = source == Source::feeder || contacts.size() >= kFingersThatMatter;
  payAttention(awake ? SurfaceNode::Attention::everything
                     : SurfaceNode::Attention::landingAndLifting);
}

// What waits at the node is for its own thread alone, which may be about to read it.
void Surface::fetchTruth() {
  if (source_ == Source::node) {
    node_->synchronise(reader_, model_.slots);
  } else {
    node_->fetch(reader_, model_.slots);
  }
}

void Surface::takeEvents(std::span<const input_event> events) {
  for (const input_event& event : events) {
    if (stopping_) return;
    const auto step = reader_.handle(event);
    if (step == ContactReader::Step::nothing) continue;
    // What was fetched is newer than the rest of these events.
    if (takeFrame(step, seconds(event))) return;
  }
}

bool Surface::takeFrame(ContactReader::Step step, double time) {
  lastTime_ = time;
  bool fetched = step == ContactReader::Step::resynchronise;
  if (fetched) fetchTruth();
  RawContacts contacts = reader_.contacts();
  // A feeder reads everything for its own sake, so nothing is saved by looking away.
  if (sleepsThroughOneFinger_ && source_ == Source::node) {
    const bool matters = contacts.size() >= kFingersThatMatter;
    const bool wasAsleep = attention_ == SurfaceNode::Attention::landingAndLifting;
    if (matters) payAttention(SurfaceNode::Attention::everything);
    if (wasAsleep && !contacts.empty()) {
      // Where the fingers are was not told while nobody listened.
      node_->synchronise(reader_, model_.slots);
      contacts = reader_.contacts();
      fetched = true;
    }
    if (!matters) payAttention(SurfaceNode::Attention::landingAndLifting);
  }
  if (const auto frame = frames_.next(contacts, time)) deliver(*frame);
  return fetched;
}

void Surface::payAttention(SurfaceNode::Attention attention) {
  if (attention == attention_) return;
  attention_ = attention;
  node_->listen(attention);
}

void Surface::vanish() {
  reader_.clear();
  if (const auto frame = frames_.next(RawContacts(), lastTime_)) deliver(*frame);
}

void Surface::deliver(const TouchFrame& frame) {
  // In this order: whoever takes the callback away sees either that it is running or that it will
  // not run any more.
  delivering_ = true;
  if (const MTFrameCallback callback = callback_) {
    const MTTouch* touches = frame.touches.empty() ? nullptr : frame.touches.data();
    callback(owner_, touches, static_cast<std::int32_t>(frame.touches.size()), frame.timestamp,
             frame.number);
  }
  delivering_ = false;
  delivering_.notify_all();
}

}  // namespace velotap
