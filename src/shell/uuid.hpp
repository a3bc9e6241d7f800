// A name that nothing else has.
//
// Any thread.
#pragma once

#include <string>

namespace velotap {

/// A fresh random UUID in its canonical form, with capital letters.
[[nodiscard]] std::string freshUuid();

}  // namespace velotap
