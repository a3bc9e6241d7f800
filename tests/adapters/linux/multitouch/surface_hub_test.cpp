#include "adapters/linux/multitouch/surface_hub.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

#include "../evdev/event_maker.hpp"

namespace velotap::test {
namespace {

// A device whose kernel is the test: events are written into one end of a socket.
class FakeNode final : public SurfaceNode {
 public:
  FakeNode() {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends_.data()) != 0) {
      ADD_FAILURE() << "no socket pair";
    }
  }
  ~FakeNode() override {
    for (const int end : ends_) {
      if (end >= 0) ::close(end);
    }
  }
  FakeNode(const FakeNode&) = delete;
  FakeNode& operator=(const FakeNode&) = delete;

  [[nodiscard]] const EvdevDevice& description() const override { return description_; }
  [[nodiscard]] int descriptor() const override { return open_ ? ends_[0] : -1; }
  [[nodiscard]] bool open() override { return open_ = present; }
  void close() override { open_ = false; }
  [[nodiscard]] ReadResult read(std::span<input_event> events, std::size_t& count) override {
    const ssize_t n = ::read(ends_[0], events.data(), events.size_bytes());
    count = n > 0 ? static_cast<std::size_t>(n) / sizeof(input_event) : 0;
    if (n > 0) return ReadResult::events;
    return n == 0 ? ReadResult::gone : ReadResult::nothing;
  }
  void synchronise(ContactReader& reader, int) override { reader.setSlots(truth, 0, 0); }

  void send(const std::vector<input_event>& events) {
    const auto size = static_cast<ssize_t>(events.size() * sizeof(input_event));
    EXPECT_EQ(::write(ends_[1], events.data(), static_cast<std::size_t>(size)), size);
  }
  void unplug() { ::close(std::exchange(ends_[1], -1)); }

  bool present = true;
  std::vector<RawContact> truth;

 private:
  EvdevDevice description_ = magicTrackpad();
  std::array<int, 2> ends_{-1, -1};
  bool open_ = false;
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

class SurfaceHubTest : public testing::Test {
 protected:
  SurfaceHubTest() {
    Frames::instance().reset();
    EXPECT_TRUE(surface_->setCallback(&Frames::callback));
  }
  std::shared_ptr<FakeNode> node_ = std::make_shared<FakeNode>();
  std::shared_ptr<Surface> surface_ = std::make_shared<Surface>(node_);
  SurfaceHub hub_;
};

TEST_F(SurfaceHubTest, saysFirstWhatIsDown) {
  node_->truth = {{.id = 5, .x = 0, .y = 0}};
  ASSERT_EQ(hub_.start(surface_), 0);
  EXPECT_EQ(Frames::instance().waitFor(1), (Seen{{5}}));
}

TEST_F(SurfaceHubTest, deliversFramesUntilItIsStopped) {
  ASSERT_EQ(hub_.start(surface_), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->send(lift(0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
  hub_.stop(surface_);
  node_->send(contact(0, 2, 0, 0));
  node_->send({report()});
  EXPECT_EQ(Frames::instance().ids.size(), 3U);
}

TEST_F(SurfaceHubTest, aDeviceUnpluggedInMidTouchLiftsItsFingers) {
  ASSERT_EQ(hub_.start(surface_), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->unplug();
  EXPECT_EQ(Frames::instance().waitFor(3), (Seen{{}, {1}, {}}));
  hub_.stop(surface_);
}

TEST_F(SurfaceHubTest, lostEventsEndWithTheTruth) {
  ASSERT_EQ(hub_.start(surface_), 0);
  Frames::instance().waitFor(1);
  node_->send(contact(0, 1, 0, 0));
  node_->send({report()});
  Frames::instance().waitFor(2);
  node_->truth = {{}, {.id = 8, .x = 1, .y = 1}};
  node_->send({event(EV_SYN, SYN_DROPPED, 0), report()});
  EXPECT_EQ(Frames::instance().waitFor(3).back(), (std::vector<std::int32_t>{8}));
}

TEST_F(SurfaceHubTest, aVanishedDeviceDoesNotStart) {
  node_->present = false;
  EXPECT_NE(hub_.start(surface_), 0);
}

TEST_F(SurfaceHubTest, aCallbackMayStopItsOwnDevice) {
  Frames::instance().inside = [this] { hub_.stop(surface_); };
  ASSERT_EQ(hub_.start(surface_), 0);
  EXPECT_EQ(Frames::instance().waitFor(1), (Seen{{}}));
}

TEST_F(SurfaceHubTest, startsAndStopsAsOftenAsAsked) {
  for (std::size_t i = 1; i <= 50; ++i) {
    ASSERT_EQ(hub_.start(surface_), 0);
    ASSERT_EQ(Frames::instance().waitFor(i).size(), i);
    hub_.stop(surface_);
  }
}

TEST_F(SurfaceHubTest, oneCallbackAtATime) {
  EXPECT_FALSE(surface_->setCallback(&Frames::callback));
  surface_->removeCallback(&Frames::callback);
  EXPECT_TRUE(surface_->setCallback(&Frames::callback));
}

}  // namespace
}  // namespace velotap::test
