// A run of the whole application from its launch to its end: what the system's frameworks are asked
// for, and what is left in them. A program of its own, as its world demands.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/macos/mac_world.hpp"

namespace velotap::test {
namespace {

using Texts = std::vector<std::string>;

TEST(MacApplicationTest, aRunFromTheLaunchToTheEnd) {
  static MacWorld world;
  static Application application(world.surroundings());
  application.trayMenu().setView(
      nativeTrayView(world.statusItem, [](const std::optional<StatusItemClick>& click) {
        application.trayMenu().statusItemClicked(click);
      }));
  Onboarding::View onboarding;
  onboarding.create = [](const std::string&, double) { ++world.onboardings; };
  application.onboarding().setView(std::move(onboarding));
  AppDelegate& delegate = application.delegate();

  delegate.applicationDidFinishLaunching();
  EXPECT_EQ(world.menuBar.titles, (Texts{"Velotap", "Edit", "Window"}));
  EXPECT_TRUE(world.statusItem.visible);
  EXPECT_EQ(world.statusItem.symbol, "exclamationmark.triangle");
  EXPECT_EQ(world.onboardings, 1);
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U) << "not trusted";

  // The box is ticked, but for a program that no longer exists: taps are refused all the same.
  world.quartz.refuseSession = true;
  world.accessibility.trusted = true;
  world.pass(1.0);
  EXPECT_EQ(world.statusItem.symbol, "exclamationmark.triangle");
  EXPECT_EQ(world.quartz.installed(kCGHIDEventTap), 0U);
  EXPECT_EQ(world.multitouch.heldReferences(), 0U) << "nothing is half started";
  world.quartz.refuseSession = false;
  delegate.applicationDidBecomeActive();
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 1U);
  EXPECT_EQ(world.quartz.installed(kCGHIDEventTap), 1U);

  // A tap with three fingers is a middle click at the lowest level.
  world.touch({});
  world.touch(row(3));
  world.pass(0.1);
  world.touch({});
  ASSERT_EQ(world.quartz.posts.size(), 2U);
  EXPECT_EQ(world.quartz.posts[0].event.type, kCGEventOtherMouseDown);
  EXPECT_EQ(world.quartz.posts[1].event.type, kCGEventOtherMouseUp);
  EXPECT_EQ(world.quartz.posts[0].location, kCGHIDEventTap);

  // A click with three fingers is rewritten on its way.
  world.touch(row(3));
  const FakeEvent press{.type = kCGEventLeftMouseDown, .integers = {{kCGMouseEventNumber, 9}}};
  EXPECT_TRUE(world.quartz.send(kCGHIDEventTap, press));
  const auto rewritten = world.quartz.send(kCGSessionEventTap, press);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(rewritten->type, kCGEventOtherMouseDown);
  EXPECT_EQ(rewritten->button, kCGMouseButtonCenter);
  world.touch({});

  // A plain click on the icon switches, any other shows the menu.
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, false});
  EXPECT_EQ(world.statusItem.symbol, "computermouse");
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U);
  ASSERT_EQ(world.announcer.said.size(), 2U);
  EXPECT_EQ(world.announcer.said[0], "Permission granted 50");
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, false});
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");
  world.statusItem.clicked(NativeClick{NativeClick::Kind::leftUp, true});
  EXPECT_EQ(world.statusItem.menu.size(), 14U);
  world.statusItem.choose("Launch at Login");
  EXPECT_TRUE(world.login.registered);

  // A device that comes restarts the listeners two seconds later.
  world.ioKit.happen(kIOFirstMatchNotification, 1);
  world.pass(1.9);
  static_cast<void>(world.log.take());
  world.pass(0.2);
  const Texts lines = world.log.take();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "restarting listeners"), 1);

  // Taps that the system takes away for good are given up.
  world.quartz.disable(kCGSessionEventTap, kCGEventTapDisabledByTimeout, false);
  EXPECT_EQ(world.statusItem.symbol, "exclamationmark.triangle");
  delegate.applicationDidBecomeActive();
  EXPECT_EQ(world.statusItem.symbol, "computermouse.fill");

  world.region.changes.notify();
  EXPECT_EQ(world.menuBar.shows, 2);

  delegate.applicationWillTerminate();
  EXPECT_EQ(world.quartz.installed(kCGSessionEventTap), 0U);
  EXPECT_EQ(world.quartz.installed(kCGHIDEventTap), 0U);
  EXPECT_EQ(world.multitouch.heldReferences(), 0U);
  EXPECT_EQ(world.cf.loopSources.size(), 1U) << "the device watch lives as long as the process";
  world.pass(20);
  EXPECT_EQ(world.dispatch.pending(), 0U);
  EXPECT_EQ(world.quartz.pools, 0);
}

}  // namespace
}  // namespace velotap::test
