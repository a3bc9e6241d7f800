// A hand that rests, moves, pinches, turns, loses and gains fingers, by a seeded generator: what
// comes out is plausible, so that gestures really begin, and yet never what one expects.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "support/touches.hpp"

namespace velotap::test {

class RandomHand {
 public:
  explicit RandomHand(std::uint32_t seed) : random_(seed) {}

  /// The contacts of the next frame; empty ones come too.
  Frame next() {
    change();
    move();
    Frame frame;
    for (const Contact& c : contacts_) {
      frame.push_back(touch({.id = c.id,
                             .x = c.x,
                             .y = c.y,
                             .vx = chance(50) ? 3.0F : 0.0F,
                             .vy = chance(50) ? 3.0F : 0.0F,
                             .size = c.light ? 0.1F : 1.0F}));
    }
    return frame;
  }

  /// True once in `n` times.
  bool chance(unsigned n) { return random_() % n == 0; }
  unsigned below(unsigned n) { return static_cast<unsigned>(random_() % n); }

 private:
  struct Contact {
    std::int32_t id = 0;
    float x = 0;
    float y = 0;
    bool light = false;
  };
  enum class Intent { rest, drift, spread, squeeze, turn };

  void change() {
    if (contacts_.empty()) {
      // Two fingers are what most gestures of a mouse are made of; three make taps.
      const unsigned n = chance(3) ? below(5) : 2 + below(2);
      for (unsigned i = 0; i < n; ++i) land();
      intend();
      return;
    }
    if (chance(12)) contacts_.clear();
    if (!contacts_.empty() && chance(60)) contacts_.erase(contacts_.begin());
    if (!contacts_.empty() && chance(60)) contacts_.front().light ^= true;
    if (!contacts_.empty() && chance(200)) contacts_.front().id += 1000;
    if (contacts_.size() < 6 && !contacts_.empty() && chance(60)) land();
    if (contacts_.size() > 1 && chance(10)) std::swap(contacts_.front(), contacts_.back());
    if (chance(8)) intend();
  }

  void land() {
    const float x = chance(30) ? 0.02F : unit(0.2F, 0.8F);
    contacts_.push_back({.id = nextId_++, .x = x, .y = unit(0.3F, 0.7F), .light = chance(30)});
  }

  void intend() {
    intent_ = static_cast<Intent>(below(5));
    driftX_ = unit(-0.03F, 0.03F);
    driftY_ = unit(-0.01F, 0.01F);
  }

  void move() {
    float centreX = 0;
    float centreY = 0;
    for (const Contact& c : contacts_) {
      centreX += c.x / static_cast<float>(contacts_.size());
      centreY += c.y / static_cast<float>(contacts_.size());
    }
    for (Contact& c : contacts_) {
      const float dx = c.x - centreX;
      const float dy = c.y - centreY;
      switch (intent_) {
        case Intent::rest:
          break;
        case Intent::drift:
          c.x += driftX_;
          c.y += driftY_;
          break;
        case Intent::spread:
          c.x += dx * 0.08F;
          c.y += dy * 0.08F;
          break;
        case Intent::squeeze:
          c.x -= dx * 0.08F;
          c.y -= dy * 0.08F;
          break;
        case Intent::turn:
          c.x += -dy * 0.06F;
          c.y += dx * 0.06F;
          break;
      }
    }
  }

  float unit(float from, float to) {
    return std::uniform_real_distribution<float>(from, to)(random_);
  }

  std::mt19937 random_;
  std::vector<Contact> contacts_;
  Intent intent_ = Intent::rest;
  float driftX_ = 0;
  float driftY_ = 0;
  std::int32_t nextId_ = 1;
};

}  // namespace velotap::test
