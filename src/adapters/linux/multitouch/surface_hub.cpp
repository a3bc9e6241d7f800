#include "adapters/linux/multitouch/surface_hub.hpp"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace velotap {
namespace {

constexpr std::uint64_t kWakeKey = 0;
constexpr std::size_t kEventsPerRead = 64;

double seconds(const input_event& event) {
  return static_cast<double>(event.input_event_sec) +
         static_cast<double>(event.input_event_usec) * 1e-6;
}

double monotonicNow() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

Surface::Surface(std::shared_ptr<SurfaceNode> node)
    : node_(std::move(node)),
      model_(surfaceModel(node_->description())),
      reader_(model_),
      frames_(model_) {}

bool Surface::setCallback(MTFrameCallback callback) {
  MTFrameCallback none = nullptr;
  return callback_.compare_exchange_strong(none, callback);
}

void Surface::removeCallback(MTFrameCallback callback) {
  callback_.compare_exchange_strong(callback, nullptr);
}

void Surface::begin() {
  // Listeners wait for an empty frame before they believe in a touch, and a device at rest would
  // never send one.
  reader_.clear();
  node_->synchronise(reader_, model_.slots);
  lastTime_ = monotonicNow();
  deliver(frames_.first(reader_.contacts(), lastTime_));
}

bool Surface::readFrames() {
  std::array<input_event, kEventsPerRead> events;
  std::size_t count = 0;
  switch (node_->read(events, count)) {
    case SurfaceNode::ReadResult::nothing:
      return true;
    case SurfaceNode::ReadResult::gone:
      return false;
    case SurfaceNode::ReadResult::events:
      break;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto step = reader_.handle(events[i]);
    if (step == ContactReader::Step::nothing) continue;
    if (step == ContactReader::Step::resynchronise) node_->synchronise(reader_, model_.slots);
    lastTime_ = seconds(events[i]);
    if (const auto frame = frames_.next(reader_.contacts(), lastTime_)) deliver(*frame);
  }
  return true;
}

void Surface::vanish() {
  reader_.clear();
  if (const auto frame = frames_.next(RawContacts(), lastTime_)) deliver(*frame);
}

void Surface::deliver(const TouchFrame& frame) {
  const MTFrameCallback callback = callback_.load();
  if (callback == nullptr) return;
  const MTTouch* touches = frame.touches.empty() ? nullptr : frame.touches.data();
  callback(owner_, touches, static_cast<std::int32_t>(frame.touches.size()), frame.timestamp,
           frame.number);
}

SurfaceHub::SurfaceHub()
    : epoll_(::epoll_create1(EPOLL_CLOEXEC)), wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.u64 = kWakeKey;
  ::epoll_ctl(epoll_, EPOLL_CTL_ADD, wake_, &event);
}

SurfaceHub::~SurfaceHub() {
  endThread();
  for (const Served& served : served_) served.surface->node().close();
  ::close(wake_);
  ::close(epoll_);
}

SurfaceHub& SurfaceHub::shared() {
  static auto* const hub = new SurfaceHub;
  return *hub;
}

int SurfaceHub::start(const std::shared_ptr<Surface>& surface) {
  std::unique_lock guard(dispatch_, std::defer_lock);
  if (!onHubThread()) guard.lock();
  if (!surface->node().open()) return ENODEV;
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.u64 = ++lastKey_;
  if (::epoll_ctl(epoll_, EPOLL_CTL_ADD, surface->node().descriptor(), &event) < 0) {
    const int error = errno;
    surface->node().close();
    return error;
  }
  served_.push_back({lastKey_, surface, false});
  if (!thread_.joinable()) runThreadLocked();
  wake();
  return 0;
}

void SurfaceHub::runThreadLocked() {
  // Signals belong to the main thread.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  ::pthread_sigmask(SIG_BLOCK, &all, &before);
  ending_ = false;
  thread_ = std::thread([this] { run(); });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void SurfaceHub::stop(const std::shared_ptr<Surface>& surface) {
  bool last = false;
  {
    std::unique_lock guard(dispatch_, std::defer_lock);
    if (!onHubThread()) guard.lock();
    const auto found =
        std::find_if(served_.begin(), served_.end(),
                     [&](const Served& served) { return served.surface == surface; });
    if (found == served_.end()) return;
    if (surface->node().descriptor() >= 0) {
      ::epoll_ctl(epoll_, EPOLL_CTL_DEL, surface->node().descriptor(), nullptr);
    }
    surface->node().close();
    served_.erase(found);
    last = served_.empty();
  }
  // The hub's own thread cannot wait for itself; it sleeps until somebody else starts or ends it.
  if (last && !onHubThread()) endThread();
}

void SurfaceHub::endThread() {
  std::thread finished;
  {
    const std::lock_guard guard(dispatch_);
    if (!thread_.joinable()) return;
    ending_ = true;
    finished = std::move(thread_);
  }
  wake();
  finished.join();
}

void SurfaceHub::run() {
  threadId_ = std::this_thread::get_id();
  std::array<epoll_event, 8> ready;
  while (true) {
    const int n = ::epoll_wait(epoll_, ready.data(), static_cast<int>(ready.size()), -1);
    const std::lock_guard guard(dispatch_);
    if (ending_) return;
    for (int i = 0; i < n; ++i) serve(ready[static_cast<std::size_t>(i)].data.u64);
  }
}

// By key and not by pointer: what was ready may have been stopped meanwhile.
void SurfaceHub::serve(std::uint64_t key) {
  if (key == kWakeKey) {
    std::uint64_t count = 0;
    static_cast<void>(::read(wake_, &count, sizeof count));
    for (std::size_t i = 0; i < served_.size(); ++i) {
      if (served_[i].begun) continue;
      served_[i].begun = true;
      const auto surface = served_[i].surface;  // its callback may stop it
      surface->begin();
    }
    return;
  }
  const auto found = std::find_if(served_.begin(), served_.end(),
                                  [key](const Served& served) { return served.key == key; });
  // Events that arrive before the first frame stay in the kernel's queue.
  if (found == served_.end() || !found->begun) return;
  const auto surface = found->surface;
  if (surface->readFrames()) return;
  ::epoll_ctl(epoll_, EPOLL_CTL_DEL, surface->node().descriptor(), nullptr);
  surface->node().close();
  surface->vanish();
}

bool SurfaceHub::onHubThread() const {
  return threadId_.load() == std::this_thread::get_id();
}

void SurfaceHub::wake() const {
  const std::uint64_t one = 1;
  while (::write(wake_, &one, sizeof one) < 0 && errno == EINTR) {
  }
}

}  // namespace velotap
