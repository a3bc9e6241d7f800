#include "platform/main_queue.hpp"

#include <cstdio>
#include <cstdlib>

namespace velotap {

void assertMainThread(const MainQueue& queue, const char* where) {
  if (queue.isCurrent()) return;
  std::fprintf(stderr, "velotap: %s called outside the main thread\n", where);
  std::abort();
}

}  // namespace velotap
