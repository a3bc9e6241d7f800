#include "adapters/linux/runtime/thread_stacks.hpp"

#include <pthread.h>

namespace velotap {

void boundThreadStacks() {
  pthread_attr_t attributes;
  if (::pthread_attr_init(&attributes) != 0) return;
  if (::pthread_attr_setstacksize(&attributes, kThreadStackBytes) == 0) {
    ::pthread_setattr_default_np(&attributes);
  }
  ::pthread_attr_destroy(&attributes);
}

}  // namespace velotap
