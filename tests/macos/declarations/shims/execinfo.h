// Call stacks, which Apple's C library has and musl lacks.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif
int backtrace(void** frames, int size);
char** backtrace_symbols(void* const* frames, int size);
#ifdef __cplusplus
}
#endif
