// The main dispatch queue, as far as the macOS adapters use it.
#pragma once

#include <stdint.h>

extern "C" {

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void* context);

#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)

struct dispatch_queue_s {
  char opaque;
};
// The main queue has a type of its own, which is a queue.
typedef struct dispatch_queue_main_s : dispatch_queue_s {
}* dispatch_queue_main_t;
extern struct dispatch_queue_main_s _dispatch_main_q;
static inline dispatch_queue_main_t dispatch_get_main_queue(void) { return &_dispatch_main_q; }
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work);

}
