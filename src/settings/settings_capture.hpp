// Rendering the settings window to files with fictional data: what is asked for, what is rendered,
// what is checked, and what is written about it.
//
// Decisions over values; painting belongs to a `CaptureStudio`. Main thread. The person's own
// settings are neither read nor written: the panes are given a suite of their own.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/value.hpp"
#include "gestures/tap_activity_log.hpp"

namespace velotap {

inline constexpr std::string_view kCaptureSuite = "production-settings-fixture";

enum class CaptureScene { gestures, tuning, apps, practice, devices };
[[nodiscard]] std::string_view captureSceneName(CaptureScene scene) noexcept;

/// The window has its least width, its first size, or that with the pane's details opened.
enum class CaptureLayout { narrow, standard, details };
enum class CaptureScroll { top, bottom };

struct CaptureShot {
  CaptureScene scene = CaptureScene::gestures;
  CaptureLayout layout = CaptureLayout::standard;
  CaptureScroll scroll = CaptureScroll::top;

  /// "tuning-narrow.png", "tuning-default-details.png", "tuning-default-bottom.png"
  [[nodiscard]] std::string fileName() const;
  /// "narrow", "default", "default-details"
  [[nodiscard]] std::string_view layoutName() const noexcept;
  /// Of the window's content, in points.
  [[nodiscard]] int width() const noexcept;
  [[nodiscard]] int height() const noexcept;
  friend bool operator==(const CaptureShot&, const CaptureShot&) = default;
};

struct CaptureRequest {
  std::string folder;  ///< absolute
  std::vector<CaptureScene> scenes;
  bool dark = false;
};
struct CaptureUsageError {
  std::string message;  ///< whole, with its line end
};

/// Nothing when the arguments ask for no capture. The program's own name is among them.
[[nodiscard]] std::optional<std::variant<CaptureRequest, CaptureUsageError>> captureRequest(
    std::span<const std::string_view> arguments);

/// In the order in which they are rendered.
[[nodiscard]] std::vector<CaptureShot> captureShots(std::span<const CaptureScene> scenes);

/// What the suite holds.
[[nodiscard]] ValueMap captureSettings();
/// What the list of recent taps shows.
[[nodiscard]] std::vector<TapActivity> captureTaps();
/// Records those taps with the contacts behind them, and a few pinches and clicks.
void recordCaptureTouches(TapActivityLog& log);

struct CapturedImage {
  int contentWidth = 0;  ///< of the pane when laid out, in points
  int contentHeight = 0;
  bool reachedBottom = true;  ///< of a shot that is scrolled there
  int pixelWidth = 0;         ///< of the file
  int pixelHeight = 0;
};
/// Why the image is not what was asked for; nothing when it is.
[[nodiscard]] std::optional<std::string> captureProblem(const CaptureShot& shot,
                                                        const CapturedImage& image);

struct CaptureEnvironment {
  std::string executable;  ///< name, not path
  std::string version;
  std::string build;
  std::string language;
  std::string locale;
  std::string timeZone;
  bool largeTextSupported = false;
};
struct ManifestImage {
  CaptureShot shot;
  CapturedImage image;
};
[[nodiscard]] std::string captureManifest(const CaptureEnvironment& environment, bool dark,
                                          std::span<const ManifestImage> images);

/// Whoever paints. Errors are sentences.
class CaptureStudio {
 public:
  virtual ~CaptureStudio() = default;
  [[nodiscard]] virtual CaptureEnvironment environment() = 0;
  /// Clears the suite, fills it, makes the folder, chooses the appearance.
  [[nodiscard]] virtual std::optional<std::string> prepare(const CaptureRequest& request,
                                                           const ValueMap& settings) = 0;
  /// Renders into the file in the folder.
  [[nodiscard]] virtual std::variant<CapturedImage, std::string> render(
      const CaptureShot& shot, const std::string& path) = 0;
  [[nodiscard]] virtual std::optional<std::string> writeFile(const std::string& path,
                                                             std::string_view text) = 0;
};

/// The exit status: nothing when no capture was asked for, 0 on success, 1 when it failed, 2 when
/// it was asked for wrongly. `makeStudio` is only called for a request that makes sense;
/// `standardError` gets whole lines.
[[nodiscard]] std::optional<int> captureSettingsIfRequested(
    std::span<const std::string_view> arguments, const std::function<CaptureStudio&()>& makeStudio,
    const std::function<void(std::string_view)>& standardError);

}  // namespace velotap
