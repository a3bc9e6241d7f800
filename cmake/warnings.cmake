# One set of flags for every target of ours: warnings are errors, sanitizers and coverage by option.
add_library(velotap_flags INTERFACE)
target_compile_options(velotap_flags INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion -Wswitch
  -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wimplicit-fallthrough)
# GCC 12 reports an impossible overlap inside std::string concatenation (its bug 105651).
target_compile_options(velotap_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(VELOTAP_SANITIZE)
  target_compile_options(velotap_flags INTERFACE
    -fsanitize=${VELOTAP_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(velotap_flags INTERFACE -fsanitize=${VELOTAP_SANITIZE})
  # What a sanitizer puts between hides from GCC what was initialised before, in std::regex too.
  target_compile_options(velotap_flags INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(VELOTAP_FUZZERS)
  # Every room counts its branches, so that the fuzzers are led by what they reach in it.
  target_compile_options(velotap_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(VELOTAP_COVERAGE)
  target_compile_options(velotap_flags INTERFACE --coverage -O0)
  target_link_options(velotap_flags INTERFACE --coverage)
endif()
