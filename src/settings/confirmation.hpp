// A question that is asked before something is done in bulk. Pure value.
#pragma once

#include <string>

namespace velotap {

struct Confirmation {
  std::string title;
  std::string message;
  std::string confirm;
  std::string cancel;  ///< changes nothing
};

}  // namespace velotap
