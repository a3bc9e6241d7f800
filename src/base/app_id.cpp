#include "base/app_id.hpp"

#include <mutex>
#include <unordered_set>

namespace velotap {

AppId AppId::intern(std::string_view text) {
  // Leaked on purpose: identifiers may still be compared while statics are being destroyed.
  static std::mutex* const lock = new std::mutex;
  static auto* const texts = new std::unordered_set<std::string>;
  const std::lock_guard guard(*lock);
  return AppId(&*texts->emplace(text).first);
}

}  // namespace velotap
