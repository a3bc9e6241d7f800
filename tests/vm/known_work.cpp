// Spends a known number of instructions, so that a machine that claims to count them can be
// checked:
//
//   known_work MILLIONS
//
// Waits for a line on standard input, spends them, prints "done", and waits for a second line, so
// that somebody else can read the counter before and after.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: known_work MILLIONS\n", stderr);
    return 2;
  }
  constexpr std::uint64_t kInstructionsInLoop = 2;
  std::uint64_t rounds = std::strtoull(argv[1], nullptr, 10) * 1'000'000 / kInstructionsInLoop;
  std::puts("waiting");
  std::fflush(stdout);
  std::getchar();
  asm volatile("1: dec %0\n\tjnz 1b" : "+r"(rounds) : : "cc");
  std::puts("done");
  std::fflush(stdout);
  std::getchar();
  return 0;
}
