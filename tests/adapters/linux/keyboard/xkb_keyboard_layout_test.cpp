#include "adapters/linux/keyboard/xkb_keyboard_layout.hpp"

#include <gtest/gtest.h>

#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/layout_sources.hpp"

namespace velotap {
namespace {

class ScriptedSource final : public LayoutSource {
 public:
  void start(std::function<void()> changed) override { listenWith(std::move(changed)); }
  void say(const char* layout) {
    know(groupAt(compileNames({.model = "", .layout = layout, .variant = "", .options = ""}), 0));
  }
};

class XkbKeyboardLayoutTest : public testing::Test {
 protected:
  XkbKeyboardLayoutTest() {
    std::vector<std::unique_ptr<LayoutSource>> sources;
    sources.push_back(std::make_unique<ScriptedSource>());
    sources.push_back(std::make_unique<ScriptedSource>());
    best = static_cast<ScriptedSource*>(sources[0].get());
    last = static_cast<ScriptedSource*>(sources[1].get());
    layout = std::make_unique<XkbKeyboardLayout>(std::move(sources));
    observation = layout->observeChanges([this] { ++changes; });
  }
  std::unique_ptr<XkbKeyboardLayout> layout;
  ScriptedSource* best = nullptr;
  ScriptedSource* last = nullptr;
  Observation observation;
  int changes = 0;
};

TEST_F(XkbKeyboardLayoutTest, thereIsNoneUntilASourceKnows) {
  EXPECT_EQ(layout->current(), nullptr);
}

TEST_F(XkbKeyboardLayoutTest, theLastResortAnswersUntilABetterSourceKnows) {
  last->say("us");
  EXPECT_EQ(layout->current()->translate(33), "[");
  EXPECT_EQ(changes, 1);
  best->say("de");
  EXPECT_EQ(layout->current()->translate(33), "ü");
  EXPECT_EQ(changes, 2);
  last->say("fr");
  EXPECT_EQ(layout->current()->translate(33), "ü");
  EXPECT_EQ(changes, 2) << "nobody asked the last resort";
}

TEST_F(XkbKeyboardLayoutTest, theSameLayoutAgainIsNoChange) {
  best->say("de");
  best->say("de");
  EXPECT_EQ(changes, 1);
  last->say("us");
  EXPECT_EQ(changes, 1);
}

TEST_F(XkbKeyboardLayoutTest, aBetterSourceWithTheSameAnswerIsNoChange) {
  last->say("de");
  best->say("de");
  EXPECT_EQ(changes, 1);
}

TEST_F(XkbKeyboardLayoutTest, aLayoutThatCannotBeReadLeavesTheLastOne) {
  best->say("de");
  best->say("no-such-layout");
  EXPECT_EQ(layout->current()->translate(33), "ü");
  EXPECT_EQ(changes, 1);
}

TEST_F(XkbKeyboardLayoutTest, aTranslatorKeepsTheLayoutThatItWasMadeFor) {
  best->say("us");
  const auto before = layout->current();
  best->say("de");
  EXPECT_EQ(before->translate(33), "[");
}

TEST_F(XkbKeyboardLayoutTest, aWithdrawnObserverIsNotCalled) {
  observation.reset();
  best->say("us");
  EXPECT_EQ(changes, 0);
}

using enum LayoutSourceKind;
using Kinds = std::vector<LayoutSourceKind>;

SessionEnvironment session(const char* type, const char* desktop, const char* display,
                           const char* waylandDisplay) {
  SessionEnvironment environment;
  environment.sessionType = type;
  environment.currentDesktop = desktop;
  environment.display = display;
  environment.waylandDisplay = waylandDisplay;
  return environment;
}

TEST(LayoutSources, eachKindOfSessionHasItsOwn) {
  EXPECT_EQ(layoutSourcesFor(session("wayland", "ubuntu:GNOME", ":0", "wayland-0")),
            (Kinds{gnome, wayland, configured}));
  EXPECT_EQ(layoutSourcesFor(session("wayland", "KDE", ":0", "wayland-0")),
            (Kinds{waylandWithKde, configured}));
  EXPECT_EQ(layoutSourcesFor(session("", "sway", "", "wayland-1")), (Kinds{wayland, configured}));
  EXPECT_EQ(layoutSourcesFor(session("x11", "GNOME", ":0", "")), (Kinds{x11, configured}));
  EXPECT_EQ(layoutSourcesFor(session("", "", ":0", "")), (Kinds{x11, configured}));
  EXPECT_EQ(layoutSourcesFor(session("tty", "", "", "")), (Kinds{configured}));
}

}  // namespace
}  // namespace velotap
