#include "adapters/linux/services/curl_fetch.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "adapters/linux/runtime/descriptor.hpp"
#include "adapters/linux/services/child_command.hpp"

namespace velotap {
namespace {

std::optional<std::string> contentOf(int file) {
  std::string text(CurlFetch::kLargest + 1, '\0');
  std::size_t length = 0;
  ssize_t got = 0;
  while (length < text.size() && (got = ::pread(file, text.data() + length, text.size() - length,
                                                static_cast<off_t>(length))) > 0) {
    length += static_cast<std::size_t>(got);
  }
  if (got < 0 || length > CurlFetch::kLargest) return std::nullopt;
  text.resize(length);
  return text;
}

}  // namespace

struct CurlFetch::Transfer {
  Descriptor file;  // in memory, by its number under /proc
  ChildCommand child;
  std::function<void(std::optional<std::string>)> done;
  Observation end;
};

CurlFetch::CurlFetch(DescriptorLoop& loop, std::string program)
    : loop_(loop), program_(std::move(program)) {}

CurlFetch::~CurlFetch() = default;

void CurlFetch::fetch(const std::string& url,
                      std::function<void(std::optional<std::string>)> done) {
  Descriptor file(::memfd_create("velotap-fetch", MFD_CLOEXEC));
  if (!file.ok() || !url.starts_with("https://")) return done(std::nullopt);
  const std::string output =
      "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(file.get());
  auto child =
      ChildCommand::start({program_, "--disable", "--fail", "--silent", "--location", "--proto",
                           "=https", "--max-redirs", "5", "--max-time", "30", "--max-filesize",
                           std::to_string(kLargest), "--output", output, "--url", url});
  if (!child) return done(std::nullopt);
  auto& transfer = transfers_.emplace_back(std::make_unique<Transfer>(
      Transfer{std::move(file), std::move(*child), std::move(done), {}}));
  transfer->end = loop_.watch(transfer->child.descriptor(), DescriptorLoop::Interest::readable,
                              [this, raw = transfer.get()] { ended(raw); });
}

void CurlFetch::ended(const Transfer* transfer) {
  const auto found = std::find_if(transfers_.begin(), transfers_.end(),
                                  [transfer](const auto& each) { return each.get() == transfer; });
  if (found == transfers_.end()) return;
  const std::unique_ptr<Transfer> finished = std::move(*found);
  transfers_.erase(found);
  finished->end.reset();
  const auto status = finished->child.finish(0);
  finished->done(status == 0 ? contentOf(finished->file.get()) : std::nullopt);
}

}  // namespace velotap
