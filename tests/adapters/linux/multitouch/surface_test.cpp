#include "adapters/linux/multitouch/surface.hpp"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include "../evdev/event_maker.hpp"

namespace velotap::test {
namespace {

// A device whose kernel is the test: events are written into one end of a socket.
class FakeNode final : public SurfaceNode {
 public:
  explicit FakeNode(EvdevDevice description) : description_(std::move(description)) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()) != 0) {
      ADD_FAILURE() << "no socket pair";
    }
  }
  ~FakeNode() override {
    for (const int end : ends_) {
      if (end >= 0) ::close(end);
    }
    ::close(interrupted_);
  }
  FakeNode(const FakeNode&) = delete;
  FakeNode& operator=(const FakeNode&) = delete;

  [[nodiscard]] const EvdevDevice& description() const override { return description_; }
  [[nodiscard]] bool open() override {
    eventfd_t count = 0;
    ::eventfd_read(interrupted_, &count);  // an interrupt of the time before
    return present;
  }
  void close() override {
    if (onClose) onClose();
  }
  [[nodiscard]] std::size_t read(std::span<input_event> events) override {
    pollfd waiting[] = {{.fd = ends_[0], .events = POLLIN, .revents = 0},
                        {.fd = interrupted_, .events = POLLIN, .revents = 0}};
    if (::poll(waiting, 2, -1) < 0 || waiting[1].revents != 0) {
      eventfd_t count = 0;
      ::eventfd_read(interrupted_, &count);
      return 0;
    }
    const ssize_t n = ::read(ends_[0], events.data(), events.size_bytes());
    return n > 0 ? static_cast<std::size_t>(n) / sizeof(input_event) : 0;
  }
  void interrupt() override { ::eventfd_write(interrupted_, 1); }
  void listen(Attention attention) override {
    const std::lock_guard guard(lock_);
    attentions_.push_back(attention);
  }
  std::vector<Attention> attentions() {
    const std::lock_guard guard(lock_);
    return attentions_;
  }
  void synchronise(ContactReader& reader, int) override {
    const std::lock_guard guard(lock_);
    reader.setSlots(truth_, 0, 0);
  }
  void fetch(ContactReader& reader, int slots) override { synchronise(reader, slots); }
  void setTruth(std::vector<RawContact> truth) {
    const std::lock_guard guard(lock_);
    truth_ = std::move(truth);
  }

  void send(const std::vector<input_event>& events) {
    const auto size = static_cast<ssize_t>(events.size() * sizeof(input_event));
    EXPECT_EQ(::write(ends_[1], events.data(), static_cast<std::size_t>(size)), size);
  }
  void unplug() { ::close(std::exchange(ends_[1], -1)); }

  void plug() {
    for (const int end : ends_) {
      if (end >= 0) ::close(end);
    }
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()), 0);
  }

  bool present = true;
  std::function<void()> onClose;

 private:
  std::vector<RawContact> truth_;
  EvdevDevice description_;
  std::array<int, 2> ends_{-1, -1};
  const int interrupted_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  std::mutex lock_;
  std::vector<Attention> attentions_;
};

// Collects frames of the hub's thread; waits for them without polling.
struct Frames {
  std::mutex lock;
  std::condition_variable arrived;
  std::vector<std::vector<std::int32_t>> ids;
  std::function<void()> inside;  // runs on the hub's thread with every frame

  static Frames& instance() {
    static Frames frames;
    return frames;
  }
  static void callback(MTDevice, const MTTouch* touches, std::int32_t count, double, std::int32_t) {
    Frames& self = instance();
    std::vector<std::int32_t> list;
    list.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) list.push_back(touches[i].identifier);
    {
      const std::lock_guard guard(self.lock);
      self.ids.push_back(list);
    }
    self.arrived.notify_all();
    if (self.inside) self.inside();
  }
  void reset() {
    ids.clear();
    inside = nullptr;
  }
  std::vector<std::vector<std::int32_t>> waitFor(std::size_t n) {
    std::unique_lock guard(lock);
    arrived.wait_for(guard, std::chrono::seconds(20), [&] { return ids.size() >= n; });
    return ids;
  }
};

using Seen = std::vector<std::vector<std::int32_t>>;

class SurfaceTest : public testing::Test {
 protected:
  SurfaceTest() {
    Frames::instance().reset();
    EXPECT_TRUE(surface_.setCallback(&Frames::callback));
  }
  std::shared_ptr<FakeNode> node_ = std::make_shared<FakeNode>(magicMouse());
  Surface surface_{node_};
};

TEST_F(SurfaceTest, saysFirstWhatIsDown) {
  node_->setTruth({{.id = 5, .x = 0, .y = 0}});
  ASSERT_EQ(surface_.start(), 0);
  EXPECT_EQ(Frames::instance().waitFor(1), (Seen{{5}}));
}

TEST_F(SurfaceTest, deliversFramesUntilItIsStopped) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->send(lift(0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
  surface_.stop();
  node_->send(contact(0, 2, 0, 0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().ids.size(), 3U);
}

TEST_F(SurfaceTest, aDeviceUnpluggedInMidTouchLiftsItsFingers) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->unplug();
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
  surface_.stop();
}

TEST_F(SurfaceTest, lostEventsEndWithTheTruth) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->setTruth({{}, {.id = 8, .x = 1, .y = 1}});
  node_->send({event(EV_SYN, SYN_DROPPED, 0), report()});
  EXPECT_EQ(Frames::instance().waitFor(3).back(), (std::vector<std::int32_t>{8}));
}

TEST_F(SurfaceTest, aVanishedDeviceDoesNotStart) {
  node_->present = false;
  EXPECT_NE(surface_.start(), 0);
}

TEST_F(SurfaceTest, aCallbackMayStopItsOwnDevice) {
  Frames::instance().inside = [this] { surface_.stop(); };
  ASSERT_EQ(surface_.start(), 0);
  EXPECT_EQ(Frames::instance().waitFor(1), (Seen{{}}));
}

TEST_F(SurfaceTest, startsAndStopsAsOftenAsAsked) {
  for (std::size_t i = 1; i <= 50; ++i) {
    ASSERT_EQ(surface_.start(), 0);
    ASSERT_EQ(Frames::instance().waitFor(i).size(), i);
    surface_.stop();
  }
}

std::vector<input_event> frameOf(const std::vector<input_event>& events) {
  std::vector<input_event> frame = events;
  frame.push_back(report());
  return frame;
}

TEST_F(SurfaceTest, takesFromAFeederWhatTheNodeDoesNotSay) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.feed(frameOf(contact(0, 1, 0, 0)));
  surface_.feed(frameOf(lift(0)));
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
}

TEST_F(SurfaceTest, aFeederBeginsWithWhatIsDownAlready) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->setTruth({{.id = 7, .x = 0, .y = 0}});
  surface_.feed(frameOf(contact(1, 8, 0, 0)));
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {7}, {7, 8}}));
}

TEST_F(SurfaceTest, theNodesOwnWordEndsTheFeeding) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.feed(frameOf(contact(0, 1, 0, 0)));
  Frames::instance().waitFor(2);
  // Lifted while nobody fed: the truth is fetched when the node speaks.
  node_->setTruth({});
  node_->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
}

TEST_F(SurfaceTest, lostEventsOfAFeederEndWithTheTruth) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.feed(frameOf(contact(0, 1, 0, 0)));
  node_->setTruth({{}, {.id = 8, .x = 1, .y = 1}});
  surface_.feed(std::vector{event(EV_SYN, SYN_DROPPED, 0), report()});
  EXPECT_EQ(Frames::instance().waitFor(3).back(), (std::vector<std::int32_t>{8}));
}

TEST_F(SurfaceTest, ignoresAFeederWhileItIsNotStarted) {
  surface_.feed(frameOf(contact(0, 1, 0, 0)));
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.stop();
  surface_.feed(frameOf(contact(0, 2, 0, 0)));
  EXPECT_EQ(Frames::instance().ids, (Seen{{}}));
}

TEST_F(SurfaceTest, aCallbackOnAFeedersThreadMayStopTheDevice) {
  // Frames are delivered one after another, so this is the feeder's.
  Frames::instance().inside = [this] {
    if (Frames::instance().ids.size() == 2) surface_.stop();
  };
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.feed(frameOf(contact(0, 1, 0, 0)));
  surface_.feed(frameOf(lift(0)));
  EXPECT_EQ(Frames::instance().ids, (Seen{{}, {1}}));
}

TEST_F(SurfaceTest, noCallbackRunsOnAFeedersThreadOnceStopReturns) {
  std::atomic<bool> stopped{false};
  std::atomic<bool> late{false};
  std::atomic<bool> done{false};
  Frames::instance().inside = [&] { late = late || stopped; };
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  std::thread feeder([&] {
    for (int i = 0; !done; ++i) surface_.feed(frameOf(contact(0, i & 0xFF, i & 0xFF, 0)));
  });
  Frames::instance().waitFor(20);
  surface_.stop();
  stopped = true;
  done = true;
  feeder.join();
  EXPECT_FALSE(late);
}

// Positions of one finger on a trackpad are not listened to; those of two are fetched.
TEST(SurfaceAttention, aTrackpadSleepsThroughOneFinger) {
  using Attention = SurfaceNode::Attention;
  Frames::instance().reset();
  const auto node = std::make_shared<FakeNode>(magicTrackpad());
  Surface surface(node);
  surface.setCallback(&Frames::callback);
  ASSERT_EQ(surface.start(), 0);
  Frames::instance().waitFor(1);
  node->setTruth({{.id = 1, .x = 10, .y = 20}});
  node->send(contact(0, 1, 0, 0));
  node->send({report()});
  Frames::instance().waitFor(2);
  EXPECT_EQ(node->attentions(), (std::vector{Attention::landingAndLifting}));
  node->setTruth({{.id = 1, .x = 500, .y = 20}, {.id = 2, .x = 900, .y = 20}});
  node->send(contact(1, 2, 0, 0));
  node->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {1, 2}}));
  EXPECT_EQ(node->attentions(), (std::vector{Attention::landingAndLifting, Attention::everything}));
  node->send(lift(0));
  node->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(4).back(), (std::vector<std::int32_t>{2}));
  surface.stop();
  EXPECT_EQ(node->attentions().back(), Attention::landingAndLifting);
}

TEST_F(SurfaceTest, aMousesSingleFingerIsFollowed) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  EXPECT_TRUE(node_->attentions().empty());
}

// Events that came along with the loss are older than the truth that was fetched after it.
TEST_F(SurfaceTest, whatWasReadBeforeTheTruthDoesNotUndoIt) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->setTruth({{.id = 8, .x = 1, .y = 1}});
  std::vector<input_event> events = {event(EV_SYN, SYN_DROPPED, 0), report()};
  append(events, contact(0, 7, 5, 5));
  events.push_back(report());
  node_->send(events);
  EXPECT_EQ(Frames::instance().waitFor(2), (Seen{{}, {8}}));
  node_->send(lift(0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {8}, {}}));
}

TEST_F(SurfaceTest, aCallbackThatWasTakenAwayIsNotRunningAnyMore) {
  std::atomic<bool> entered = false;
  std::atomic<bool> removing = false;
  std::atomic<bool> left = false;
  Frames::instance().inside = [&] {
    entered = true;
    entered.notify_all();
    removing.wait(false);
    for (int i = 0; i < 1000; ++i) std::this_thread::yield();
    left = true;
  };
  ASSERT_EQ(surface_.start(), 0);
  entered.wait(false);
  removing = true;
  removing.notify_all();
  surface_.removeCallback(&Frames::callback);
  EXPECT_TRUE(left);
  surface_.stop();
}

TEST_F(SurfaceTest, aCallbackMayTakeItselfAway) {
  Frames::instance().inside = [this] { surface_.removeCallback(&Frames::callback); };
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  surface_.stop();
  EXPECT_TRUE(surface_.setCallback(&Frames::callback)) << "nobody is registered any more";
}

TEST_F(SurfaceTest, aDeviceThatVanishedMayBeStartedAgain) {
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->unplug();
  Frames::instance().waitFor(3);
  node_->plug();
  ASSERT_EQ(surface_.start(), 0);
  Frames::instance().waitFor(4);
  node_->send(contact(0, 2, 0, 0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(5), (Seen{{}, {1}, {}, {}, {2}}));
}

// As when a listener gives a device back in the middle of its frame.
TEST(SurfaceLifetime, aCallbackMayGiveBackTheLastReference) {
  Frames::instance().reset();
  const auto node = std::make_shared<FakeNode>(magicMouse());
  std::promise<void> closed;
  node->onClose = [&] { closed.set_value(); };
  auto surface = std::make_shared<Surface>(node);
  surface->setCallback(&Frames::callback);
  // Only once the starter has come back: until then it still uses the surface.
  Frames::instance().inside = [&] {
    if (Frames::instance().waitFor(1).size() < 2) return;
    surface->stop();
    surface.reset();
  };
  ASSERT_EQ(surface->start(), 0);
  Frames::instance().waitFor(1);
  node->send(contact(0, 1, 0, 0));
  node->send({report()});
  closed.get_future().wait();
  EXPECT_EQ(surface, nullptr);
}

TEST_F(SurfaceTest, oneCallbackAtATime) {
  EXPECT_FALSE(surface_.setCallback(&Frames::callback));
  surface_.removeCallback(&Frames::callback);
  EXPECT_TRUE(surface_.setCallback(&Frames::callback));
}

}  // namespace
}  // namespace velotap::test
