// What does not make a difference to a hand must not make one to the verdict: each random session
// is played again with contacts permuted, identifiers renamed, mirrored, frames and records
// duplicated, and at another time of day.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "engine_fixture.hpp"

namespace velotap {
namespace {

using namespace test;  // NOLINT: the fixture's vocabulary

struct TimedFrame {
  double at = 0;
  bool onMouse = false;
  Frame contacts;
};
using Script = std::vector<TimedFrame>;

// Positions and times are multiples of 1/1024, so that mirroring and shifting are exact.
class ScriptWriter {
 public:
  explicit ScriptWriter(std::uint32_t seed) : random_(seed) {}

  Script write() {
    Script script;
    double now = 0;
    for (int session = 0; session < 40; ++session) {
      now += below(3) == 0 ? steps(3, 10) : steps(60, 400);
      writeSession(script, now);
    }
    return script;
  }

 private:
  unsigned below(unsigned n) { return static_cast<unsigned>(random_() % n); }
  double steps(unsigned from, unsigned to) { return (from + below(to - from)) / 1024.0; }
  float place(unsigned from, unsigned to) {
    return static_cast<float>(from + below(to - from)) / 1024.0F;
  }

  void writeSession(Script& script, double& now) {
    const unsigned n = below(8) == 0 ? 1 + below(6) : 3 + (below(4) == 0 ? 1U : 0U);
    const bool swipe = below(3) == 0;
    const bool onMouse = swipe || below(2) == 0;
    const bool slow = !swipe && below(5) == 0;
    const unsigned reach = below(3) == 0 ? 90 : 30;
    Frame hand;
    for (unsigned i = 0; i < n; ++i) {
      hand.push_back(touch({.id = nextId_++, .x = place(300, 700), .y = place(300, 700)}));
      if (below(3) == 0) {
        script.push_back({now, onMouse, hand});
        now += steps(1, 10);
      }
    }
    // Not a divisor of the least travel: the mean of three is rounded, and at a limit either way.
    const float sweep = below(2) == 0 ? 60.0F / 1024 : -60.0F / 1024;
    const unsigned frames = swipe ? 5 + below(3) : below(3) == 0 ? 1 : 2 + below(6);
    for (unsigned f = 0; f < frames; ++f) {
      script.push_back({now, onMouse, hand});
      now += slow ? steps(40, 100) : steps(5, 50);
      for (MTTouch& contact : hand) {
        if (swipe) {
          contact.position.x += sweep;
        } else {
          contact.position.x += place(0, reach) - place(reach / 2, reach / 2 + 1);
          contact.position.y += place(0, reach) - place(reach / 2, reach / 2 + 1);
        }
      }
    }
    while (below(3) == 0 && hand.size() > 1) {
      hand.erase(hand.begin() + below(static_cast<unsigned>(hand.size())));
      script.push_back({now, onMouse, hand});
      now += steps(1, 5);
    }
    script.push_back({now, onMouse, {}});
  }

  std::mt19937 random_;
  std::int32_t nextId_ = 1;
};

// What came of a script: posted events, recorded outcomes and the measurements that were said.
struct Result {
  Lines posted;
  Lines outcomes;
  Lines said;
  friend bool operator==(const Result&, const Result&) = default;
};

void PrintTo(const Result& result, std::ostream* out) {
  for (const Lines* lines : {&result.posted, &result.outcomes, &result.said}) {
    for (const std::string& line : *lines) *out << "\n  " << line;
  }
}

class Player : public EngineKit {
 public:
  Result play(const Script& script, double origin) {
    addDevices();
    set("mouseSwipe3Nav", true);
    set("padTap4", true);
    time.set(origin);
    EXPECT_TRUE(engine.start());
    multitouch.deliver(pad, nullptr, 0);
    multitouch.deliver(mouse, nullptr, 0);
    said.take();
    Result result;
    for (const TimedFrame& frame : script) {
      time.set(origin + frame.at);
      multitouch.deliver(frame.onMouse ? mouse : pad, frame.contacts.data(),
                         static_cast<std::int32_t>(frame.contacts.size()));
    }
    result.posted = posted.take();
    for (const std::string& line : said.take()) {
      if (line.starts_with("session end")) result.said.push_back(line);
    }
    for (const TapActivity& item : activity.items()) {
      result.outcomes.push_back(std::to_string(static_cast<int>(item.outcome)) + " " +
                                std::to_string(item.fingers) + " " + decimalText(item.duration) +
                                " " + decimalText(item.drift));
    }
    return result;
  }
};

Result play(const Script& script, double origin = 0) {
  Player player;
  return player.play(script, origin);
}

class TapMetamorphic : public ::testing::TestWithParam<std::uint32_t> {
 protected:
  template <typename Change>
  Script changed(Change change) const {
    Script copy = script_;
    for (TimedFrame& frame : copy) change(frame.contacts);
    return copy;
  }
  std::mt19937 random_{GetParam()};
  Script script_ = ScriptWriter(GetParam()).write();
  Result expected_ = play(script_);
};

TEST_P(TapMetamorphic, OrderOfContacts) {
  EXPECT_EQ(play(changed([this](Frame& contacts) {
              std::shuffle(contacts.begin(), contacts.end(), random_);
            })),
            expected_);
}

TEST_P(TapMetamorphic, NamesOfContacts) {
  std::map<std::int32_t, std::int32_t> names;
  EXPECT_EQ(play(changed([&](Frame& contacts) {
              for (MTTouch& contact : contacts) {
                // An odd factor is a bijection of the 32-bit numbers.
                const auto name = static_cast<std::uint32_t>(contact.identifier) * 2654435769U;
                contact.identifier = static_cast<std::int32_t>(name);
              }
            })),
            expected_);
}

TEST_P(TapMetamorphic, RepeatedRecordsOfOneContact) {
  EXPECT_EQ(play(changed([this](Frame& contacts) {
              if (contacts.empty()) return;
              MTTouch again = contacts[random_() % contacts.size()];
              again.position = {0, 0};
              contacts.push_back(again);
            })),
            expected_);
}

TEST_P(TapMetamorphic, ContactsThatDoNotTouch) {
  EXPECT_EQ(play(changed([this](Frame& contacts) {
              const auto place = static_cast<std::ptrdiff_t>(random_() % (contacts.size() + 1));
              contacts.insert(contacts.begin() + place,
                              touch({.id = -5, .stage = random_() % 2 == 0 ? 2 : 7}));
            })),
            expected_);
}

TEST_P(TapMetamorphic, RepeatedFrames) {
  Script doubled;
  for (const TimedFrame& frame : script_) {
    doubled.push_back(frame);
    doubled.push_back(frame);
  }
  EXPECT_EQ(play(doubled), expected_);
}

TEST_P(TapMetamorphic, TimeOfDay) {
  for (const double origin : {1000.0, 86400.0, 16777216.0}) {
    EXPECT_EQ(play(script_, origin), expected_);
  }
}

TEST_P(TapMetamorphic, Mirrored) {
  Result mirrored = play(changed([](Frame& contacts) {
    for (MTTouch& contact : contacts) contact.position.x = 1 - contact.position.x;
  }));
  for (std::string& line : mirrored.posted) {
    if (line.starts_with("key 33")) {
      line.replace(4, 2, "30");
    } else if (line.starts_with("key 30")) {
      line.replace(4, 2, "33");
    }
  }
  EXPECT_EQ(mirrored, expected_);
}

INSTANTIATE_TEST_SUITE_P(Seeds, TapMetamorphic, ::testing::Range(1U, 13U));

// The scripts above must contain what they are meant to vary.
TEST(TapMetamorphicScripts, CoverEveryKindOfOutcome) {
  std::map<std::string, int> seen;
  for (std::uint32_t seed = 1; seed < 13; ++seed) {
    const Result result = play(ScriptWriter(seed).write());
    for (const std::string& line : result.posted) ++seen[line];
    for (const std::string& line : result.outcomes) ++seen[line.substr(0, 1)];
  }
  for (const char* kind : {"mouse down 2 at (512.0, 384.5)", "key 33 down flags=1048576",
                           "key 30 down flags=1048576", "0", "1", "2", "3"}) {
    EXPECT_GE(seen[kind], 5) << kind;
  }
}

}  // namespace
}  // namespace velotap
