#include "adapters/linux/files/entry_value.hpp"

#include <cstddef>

namespace velotap {

std::string unescapedEntryValue(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    switch (value[++i]) {
      case 's':
        text += ' ';
        break;
      case 'n':
        text += '\n';
        break;
      case 't':
        text += '\t';
        break;
      case 'r':
        text += '\r';
        break;
      case '\\':
        text += '\\';
        break;
      default:
        (text += '\\') += value[i];
    }
  }
  return text;
}

}  // namespace velotap
