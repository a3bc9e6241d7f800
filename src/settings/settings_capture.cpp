#include "settings/settings_capture.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "config/settings_keys.hpp"
#include "settings/preferences_tabs.hpp"

namespace velotap {
namespace {

constexpr std::string_view kCaptureOption = "--listlane-capture";
constexpr std::string_view kScenesOption = "--scenes";
constexpr std::string_view kDarkOption = "--dark";

constexpr std::array kScenes = {
    std::pair{CaptureScene::gestures, std::string_view("gestures")},
    std::pair{CaptureScene::tuning, std::string_view("tuning")},
    std::pair{CaptureScene::apps, std::string_view("apps")},
    std::pair{CaptureScene::practice, std::string_view("practice")},
    std::pair{CaptureScene::devices, std::string_view("devices")},
};

constexpr int kUsageStatus = 2;
constexpr int kFailureStatus = 1;

CaptureUsageError scenesUsage() {
  std::string names;
  for (const auto& [scene, name] : kScenes) {
    names += (names.empty() ? "" : ",") + std::string(name);
  }
  return {std::string(kScenesOption) + " takes a comma-separated list of: " + names + "\n"};
}

// What follows the option; nothing when it ends the arguments.
std::optional<std::string_view> argumentOf(std::span<const std::string_view> arguments,
                                           std::string_view option) {
  const auto found = std::find(arguments.begin(), arguments.end(), option);
  if (found == arguments.end() || found + 1 == arguments.end()) return std::nullopt;
  return *(found + 1);
}

bool isGiven(std::span<const std::string_view> arguments, std::string_view option) {
  return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

// In their own order, each once; nothing when a name is unknown or missing.
std::optional<std::vector<CaptureScene>> scenesNamed(std::string_view list) {
  std::vector<CaptureScene> wanted;
  for (std::size_t start = 0; start <= list.size();) {
    const std::size_t end = std::min(list.find(',', start), list.size());
    const std::string_view name = list.substr(start, end - start);
    const auto* const known = std::find_if(
        kScenes.begin(), kScenes.end(), [name](const auto& scene) { return scene.second == name; });
    if (known == kScenes.end()) return std::nullopt;
    wanted.push_back(known->first);
    start = end + 1;
  }
  std::sort(wanted.begin(), wanted.end());
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  return wanted;
}

std::variant<int, std::string> captured(const CaptureRequest& request, CaptureStudio& studio) {
  if (auto error = studio.prepare(request, captureSettings())) return *std::move(error);
  std::vector<ManifestImage> images;
  for (const CaptureShot& shot : captureShots(request.scenes)) {
    auto result = studio.render(shot, request.folder + "/" + shot.fileName());
    if (auto* error = std::get_if<std::string>(&result)) return std::move(*error);
    const CapturedImage& image = std::get<CapturedImage>(result);
    if (auto problem = captureProblem(shot, image)) return *std::move(problem);
    images.push_back({shot, image});
  }
  const std::string manifest = captureManifest(studio.environment(), request.dark, images);
  if (auto error = studio.writeFile(request.folder + "/capture.json", manifest)) {
    return *std::move(error);
  }
  return 0;
}

}  // namespace

std::string_view captureSceneName(CaptureScene scene) noexcept {
  return kScenes.at(static_cast<std::size_t>(scene)).second;
}

std::string CaptureShot::fileName() const {
  std::string name = std::string(captureSceneName(scene)) + "-" + std::string(layoutName());
  if (scroll == CaptureScroll::bottom) name += "-bottom";
  return name + ".png";
}

std::string_view CaptureShot::layoutName() const noexcept {
  switch (layout) {
    case CaptureLayout::narrow:
      return "narrow";
    case CaptureLayout::standard:
      break;
    case CaptureLayout::details:
      return "default-details";
  }
  return "default";
}

int CaptureShot::width() const noexcept {
  return layout == CaptureLayout::narrow ? PreferencesWindowSize::kLeastWidth
                                         : PreferencesWindowSize::kWidth;
}

int CaptureShot::height() const noexcept {
  return PreferencesWindowSize::kHeight;
}

std::optional<std::variant<CaptureRequest, CaptureUsageError>> captureRequest(
    std::span<const std::string_view> arguments) {
  if (!isGiven(arguments, kCaptureOption)) return std::nullopt;
  const auto folder = argumentOf(arguments, kCaptureOption);
  if (!folder || folder->substr(0, 1) != "/") {
    return CaptureUsageError{std::string(kCaptureOption) +
                             " requires an absolute output directory\n"};
  }
  CaptureRequest request{
      .folder = std::string(*folder), .scenes = {}, .dark = isGiven(arguments, kDarkOption)};
  if (isGiven(arguments, kScenesOption)) {
    auto scenes = scenesNamed(argumentOf(arguments, kScenesOption).value_or(""));
    if (!scenes) return scenesUsage();
    request.scenes = *std::move(scenes);
  } else {
    for (const auto& [scene, name] : kScenes) request.scenes.push_back(scene);
  }
  return request;
}

std::vector<CaptureShot> captureShots(std::span<const CaptureScene> scenes) {
  std::vector<CaptureShot> shots;
  for (const CaptureScene scene : scenes) {
    for (const auto layout :
         {CaptureLayout::narrow, CaptureLayout::standard, CaptureLayout::details}) {
      shots.push_back({scene, layout, CaptureScroll::top});
    }
    if (scene == CaptureScene::tuning) {
      shots.push_back({scene, CaptureLayout::narrow, CaptureScroll::bottom});
      shots.push_back({scene, CaptureLayout::standard, CaptureScroll::bottom});
    }
  }
  return shots;
}

std::optional<std::string> captureProblem(const CaptureShot& shot, const CapturedImage& image) {
  if (image.contentWidth > shot.width() || image.contentHeight > shot.height()) {
    return "fixture expanded beyond its requested window size.";
  }
  if (shot.scroll == CaptureScroll::bottom && !image.reachedBottom) {
    return "The Tuning capture could not reach its lower controls.";
  }
  return std::nullopt;
}

std::optional<int> captureSettingsIfRequested(
    std::span<const std::string_view> arguments, const std::function<CaptureStudio&()>& makeStudio,
    const std::function<void(std::string_view)>& standardError) {
  const auto asked = captureRequest(arguments);
  if (!asked) return std::nullopt;
  if (const auto* wrong = std::get_if<CaptureUsageError>(&*asked)) {
    standardError(wrong->message);
    return kUsageStatus;
  }
  const auto result = captured(std::get<CaptureRequest>(*asked), makeStudio());
  if (const auto* error = std::get_if<std::string>(&result)) {
    standardError("Settings capture failed: " + *error + "\n");
    return kFailureStatus;
  }
  return std::get<int>(result);
}

}  // namespace velotap
