#include "adapters/linux/clicks/guardian.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <utility>

#include "adapters/linux/clicks/guard_process.hpp"

namespace velotap {
namespace {

using Counter = std::atomic<std::uint64_t>;
static_assert(Counter::is_always_lock_free);

}  // namespace

Guardian::Guardian() {
  void* page =
      ::mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page != MAP_FAILED) served_ = new (page) Counter(0);
}

Guardian::~Guardian() {
  stop();
  if (served_ != nullptr) ::munmap(served_, sizeof(Counter));
}

int Guardian::start(const Watched& watched) {
  stop();
  if (served_ == nullptr) return ENOMEM;
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return errno;
  const Descriptor childsEnd(pipe[0]);
  Descriptor ours(pipe[1]);
  child_ = ::fork();
  if (child_ == 0) guardProcess(watched, *served_, childsEnd.get());
  if (child_ < 0) return errno;
  lifeline_ = std::move(ours);
  return 0;
}

void Guardian::stop() {
  lifeline_.reset();
  if (child_ <= 0) return;
  while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
  child_ = -1;
}

}  // namespace velotap
