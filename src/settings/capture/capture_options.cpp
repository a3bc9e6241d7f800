#include "settings/capture/capture_options.hpp"

#include <algorithm>

namespace velotap {
namespace {

constexpr const char* kFlag = "--listlane-capture";
constexpr const char* kScenes = "--scenes";
constexpr const char* kDark = "--dark";

const std::string* argumentAfter(const std::vector<std::string>& arguments, const char* flag) {
  const auto found = std::find(arguments.begin(), arguments.end(), flag);
  if (found == arguments.end() || found + 1 == arguments.end()) return nullptr;
  return &*(found + 1);
}

bool has(const std::vector<std::string>& arguments, const char* flag) {
  return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

std::vector<std::string> split(const std::string& list) {
  std::vector<std::string> names;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = list.find(',', start);
    names.push_back(list.substr(start, comma - start));
    if (comma == std::string::npos) return names;
    start = comma + 1;
  }
}

CaptureUsageError sceneUsage() {
  std::string message = "--scenes requires a comma-separated list of:";
  for (const CaptureScene scene : allScenes()) message += " " + std::string(sceneName(scene));
  return {message + "\n"};
}

// Nothing for a name that no scene has.
std::optional<std::vector<CaptureScene>> scenesOf(const std::string& list) {
  const std::vector<std::string> names = split(list);
  std::vector<CaptureScene> scenes;
  for (const CaptureScene scene : allScenes()) {
    if (std::find(names.begin(), names.end(), sceneName(scene)) != names.end()) {
      scenes.push_back(scene);
    }
  }
  const bool known = std::all_of(names.begin(), names.end(), [](const std::string& name) {
    return std::any_of(allScenes().begin(), allScenes().end(),
                       [&name](CaptureScene scene) { return sceneName(scene) == name; });
  });
  if (!known) return std::nullopt;
  return scenes;
}

}  // namespace

std::string_view sceneName(CaptureScene scene) noexcept {
  switch (scene) {
    case CaptureScene::gestures:
      return "gestures";
    case CaptureScene::tuning:
      return "tuning";
    case CaptureScene::apps:
      return "apps";
    case CaptureScene::practice:
      return "practice";
    case CaptureScene::devices:
      break;
  }
  return "devices";
}

const std::vector<CaptureScene>& allScenes() {
  static const std::vector<CaptureScene> kAll = {CaptureScene::gestures, CaptureScene::tuning,
                                                 CaptureScene::apps, CaptureScene::practice,
                                                 CaptureScene::devices};
  return kAll;
}

std::optional<std::variant<CaptureOptions, CaptureUsageError>> captureOptions(
    const std::vector<std::string>& arguments) {
  if (!has(arguments, kFlag)) return std::nullopt;
  const std::string* folder = argumentAfter(arguments, kFlag);
  if (folder == nullptr || !folder->starts_with('/')) {
    return CaptureUsageError{"--listlane-capture requires an absolute output directory\n"};
  }
  CaptureOptions options{.folder = *folder, .scenes = allScenes(), .dark = has(arguments, kDark)};
  if (has(arguments, kScenes)) {
    const std::string* list = argumentAfter(arguments, kScenes);
    const auto scenes = list == nullptr ? std::nullopt : scenesOf(*list);
    if (!scenes) return sceneUsage();
    options.scenes = *scenes;
  }
  return options;
}

}  // namespace velotap
