#include "adapters/linux/workspace/application_index.hpp"

#include <algorithm>
#include <array>

namespace velotap {
namespace {

constexpr std::string_view kSuffix = ".desktop";
constexpr std::string_view kFolder = "/applications/";

/// Letter case of ASCII only: identifiers are ASCII, and the locale must not matter.
char folded(char c) noexcept {
  if (c == ' ') return '-';
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool resembles(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return folded(x) == folded(y); });
}

std::string_view lastPart(std::string_view id) noexcept {
  return id.substr(id.find_last_of('.') + 1);
}

}  // namespace

ApplicationIndex::ApplicationIndex(std::vector<InstalledApplication> applications)
    : sorted_(std::move(applications)) {
  std::sort(sorted_.begin(), sorted_.end(),
            [](const auto& a, const auto& b) { return a.id < b.id; });
}

template <typename Matches>
const InstalledApplication* ApplicationIndex::best(Matches matches) const {
  const InstalledApplication* helper = nullptr;
  for (const InstalledApplication& application : sorted_) {
    if (!matches(application)) continue;
    if (application.inMenus) return &application;
    if (helper == nullptr) helper = &application;
  }
  return helper;
}

template <typename Matches>
const InstalledApplication* ApplicationIndex::only(Matches matches) const {
  const InstalledApplication* shown = nullptr;
  const InstalledApplication* helper = nullptr;
  int shownCount = 0;
  int helperCount = 0;
  for (const InstalledApplication& application : sorted_) {
    if (!matches(application)) continue;
    (application.inMenus ? shown : helper) = &application;
    ++(application.inMenus ? shownCount : helperCount);
  }
  if (shownCount > 0) return shownCount == 1 ? shown : nullptr;
  return helperCount == 1 ? helper : nullptr;
}

const InstalledApplication* ApplicationIndex::byId(std::string_view id) const {
  const auto found =
      std::lower_bound(sorted_.begin(), sorted_.end(), id,
                       [](const InstalledApplication& a, std::string_view b) { return a.id < b; });
  return found != sorted_.end() && found->id == id ? &*found : nullptr;
}

const InstalledApplication* ApplicationIndex::find(const FrontWindow& window,
                                                   std::string_view program) const {
  const std::string appId = desktopFileId(window.appId);
  if (!appId.empty()) {
    if (const auto* found = byId(appId)) return found;
  }
  // The instance comes before the class: web applications share their browser's class.
  std::vector<std::string_view> names;
  for (const std::string_view name :
       std::array<std::string_view, 3>{appId, window.instance, window.windowClass}) {
    if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
      names.push_back(name);
    }
  }
  if (names.empty() && !program.empty()) names.push_back(program);

  for (const auto name : names) {
    if (const auto* found = best([&](const auto& a) { return a.windowClass == name; })) {
      return found;
    }
  }
  for (const auto name : names) {
    if (const auto* found = byId(name)) return found;
  }
  for (const auto name : names) {
    if (const auto* found = best([&](const auto& a) {
          return resembles(a.id, name) || resembles(a.windowClass, name);
        })) {
      return found;
    }
  }
  for (const auto name : names) {
    if (const auto* found = only([&](const auto& a) { return resembles(lastPart(a.id), name); })) {
      return found;
    }
  }
  for (const auto name : names) {
    if (const auto* found = only([&](const auto& a) { return resembles(a.program, name); })) {
      return found;
    }
  }
  return nullptr;
}

std::string desktopFileId(std::string_view text) {
  std::string id(text);
  if (const auto folder = id.rfind(kFolder); folder != std::string::npos) {
    id.erase(0, folder + kFolder.size());
    std::replace(id.begin(), id.end(), '/', '-');
  }
  if (id.size() > kSuffix.size() && id.ends_with(kSuffix)) id.resize(id.size() - kSuffix.size());
  return id;
}

std::string identifierWithoutEntry(const FrontWindow& window, std::string_view program) {
  if (!window.appId.empty()) return desktopFileId(window.appId);
  if (!window.windowClass.empty()) return window.windowClass;
  if (!window.instance.empty()) return window.instance;
  return std::string(program);
}

}  // namespace velotap
