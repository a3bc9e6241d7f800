// The uptime counter.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct mach_timebase_info {
  uint32_t numer;
  uint32_t denom;
} mach_timebase_info_data_t;
typedef struct mach_timebase_info* mach_timebase_info_t;

uint64_t mach_absolute_time(void);
int mach_timebase_info(mach_timebase_info_t info);

#ifdef __cplusplus
}
#endif
