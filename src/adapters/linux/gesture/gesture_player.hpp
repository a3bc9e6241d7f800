// Decides where two contacts of a virtual touchpad lie, and when, so that the desktop sees the
// pinch or the rotation that the program asks for.
//
// Gesture events and time go in; frames with due times come out. One gesture is played at a time:
//   away ─ land 40 mm apart ─► landed ─ 2 mm outwards each ─► playing ─ lift both ─► away
//                                                               │ cancelled: lift one
//                                                               ▼
//                                                           lettingGo ─ lift the other ─► away
// Those 2 mm make the desktop recognise two fingers that move apart; it counts scale and angle
// from there, so that they do not show. Lifting one of the two and waiting is how a touchpad tells
// that a gesture was given up.
//
// Frames keep kFrameSpacing apart and a contact moves no faster than the desktop believes of a
// finger: changes that come faster are merged, larger ones are spread over frames. One landing
// reaches from kSmallestScale to kLargestScale; a pinch that goes on beyond is lifted, landed anew
// and goes on, as a person does who runs out of touchpad: applications multiply from there.
// Rotation has no limit.
//
// A gesture that could not land in time, because the touchpad took its time to appear, is dropped
// rather than played to whatever is under the pointer by then.
//
// An event that fits no gesture in progress does no harm: a terminal one is ignored, a change
// begins a gesture of its own. A gesture of which nothing is heard for kForgottenAfter is
// cancelled, because its end may never come. So, whatever events arrive, in the end no contact is
// left down.
//
// A value: no clock, thread, I/O or allocation. Seconds of uptime, millimetres from the top left
// corner, angles clockwise as y grows downwards.
#pragma once

#include <array>
#include <optional>

#include "base/point.hpp"
#include "platform/event_stream.hpp"

namespace velotap {

inline constexpr double kPadWidth = 200;   ///< millimetres
inline constexpr double kPadHeight = 150;  ///< millimetres
inline constexpr double kFrameSpacing = 0.008;
inline constexpr double kLandingDistance = 40;  ///< between the contacts
inline constexpr double kPlayingDistance = 44;  ///< where scale 1 is
inline constexpr double kSmallestScale = 0.1;   ///< 4.4 mm apart
inline constexpr double kLargestScale = 5.5;    ///< 242 mm apart along the pad's diagonal
inline constexpr double kLongestStep = 7;       ///< millimetres a frame and contact
inline constexpr double kLettingGoTime = 0.15;  ///< the desktop gives a gesture up after 0.1
inline constexpr double kForgottenAfter = 1.0;
inline constexpr double kTooLateToLand = 0.3;      ///< since the end of a gesture that never landed
inline constexpr double kMostPendingScale = 1000;  ///< and its inverse; beyond is not fingers
inline constexpr double kMostPendingAngle = 360;   ///< degrees either way

/// Where the contacts are once the frame is played; nothing for one that is not down.
struct PadFrame {
  std::array<std::optional<Point>, 2> contacts;
  friend bool operator==(const PadFrame&, const PadFrame&) = default;
};

class GesturePlayer {
 public:
  /// `location` is not used: a touchpad's gesture goes to whatever is under the pointer.
  void handle(GestureKind kind, GesturePhase phase, double value, double now) noexcept;

  /// When `step` wants to be called next; nothing while no contact is down nor to come.
  [[nodiscard]] std::optional<double> deadline() const noexcept;

  /// The frame that is due; nothing when it is too early, or when a deadline led to no movement.
  [[nodiscard]] std::optional<PadFrame> step(double now) noexcept;

  [[nodiscard]] bool touching() const noexcept { return stage_ != Stage::away; }

  /// Forgets everything and gives the frame that lifts what is down, if anything is.
  [[nodiscard]] std::optional<PadFrame> abandon() noexcept;

 private:
  enum class Stage { away, landed, playing, lettingGo };
  enum class Finish { open, lift, cancel };

  /// What is asked of one gesture, relative to where it stood at its latest landing.
  struct Wanted {
    GestureKind kind = GestureKind::magnify;
    Finish finish = Finish::open;
    double scale = 1;
    double angle = 0;      ///< degrees, clockwise
    double lastHeard = 0;  ///< time of the latest event
  };

  [[nodiscard]] Wanted* openGesture() noexcept;
  void begin(GestureKind kind, double now) noexcept;
  void change(GestureKind kind, double value, double now) noexcept;
  void finish(GestureKind kind, Finish how, double now) noexcept;
  [[nodiscard]] bool reached() const noexcept;
  [[nodiscard]] double distanceToGo() const noexcept;
  [[nodiscard]] double allowedStep(double now) const noexcept;
  [[nodiscard]] std::optional<PadFrame> land(double now) noexcept;
  [[nodiscard]] std::optional<PadFrame> play(double now) noexcept;
  [[nodiscard]] std::optional<PadFrame> letGo(double now) noexcept;
  [[nodiscard]] PadFrame moveTowardsWanted(double now) noexcept;
  [[nodiscard]] PadFrame lift(double now) noexcept;
  [[nodiscard]] PadFrame contactsAt(double distance, double angle) const noexcept;
  void takeNext() noexcept;

  Stage stage_ = Stage::away;
  std::optional<Wanted> current_;  ///< being played, or about to be
  std::optional<Wanted> next_;     ///< began before the current one was off the pad
  double playedScale_ = 1;
  double playedAngle_ = 0;
  double lastFrame_ = -1;  ///< time of the latest frame
  double lastSpeed_ = 0;   ///< of a contact in that frame, millimetres a second
  double letGoUntil_ = 0;
};

}  // namespace velotap
