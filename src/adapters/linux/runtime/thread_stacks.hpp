// How much stack the threads of a program without windows get.
//
// Eight megabytes are the system's choice, and its kernel backs the first touch of a range that
// large with a whole huge page: two megabytes resident for a thread that needs some thousand bytes.
#pragma once

#include <cstddef>

namespace velotap {

inline constexpr std::size_t kThreadStackBytes = std::size_t{512} * 1024;

// Every thread that is started later, by us or by a library, gets that much. To be called before
// the first one, from main. Where the system refuses, threads keep the size they had.
void boundThreadStacks();

}  // namespace velotap
