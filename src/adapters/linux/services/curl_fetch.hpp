// Fetches a small text over https with the system's curl, so that no network library is loaded for
// something that happens once a day.
//
// Main thread; never waits. At most 64 KiB and 30 seconds; https only, also after redirections.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/descriptor_loop.hpp"

namespace velotap {

class CurlFetch {
 public:
  static constexpr std::size_t kLargest = 65536;

  /// `program` is tried as it is; tests put another in its place.
  explicit CurlFetch(DescriptorLoop& loop, std::string program = "curl");
  ~CurlFetch();
  CurlFetch(const CurlFetch&) = delete;
  CurlFetch& operator=(const CurlFetch&) = delete;

  /// Calls back once, possibly at once: the content, or nothing. Not after the end of this object.
  void fetch(const std::string& url, std::function<void(std::optional<std::string>)> done);

 private:
  struct Transfer;
  void ended(const Transfer* transfer);

  DescriptorLoop& loop_;
  const std::string program_;
  std::vector<std::unique_ptr<Transfer>> transfers_;
};

}  // namespace velotap
