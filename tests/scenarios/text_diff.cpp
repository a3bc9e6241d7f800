#include "text_diff.hpp"

#include <algorithm>
#include <vector>

namespace velotap::test {
namespace {

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, length));
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return lines;
}

// How many lines the rests of both texts from each pair of lines on have in common.
using Table = std::vector<std::vector<std::size_t>>;

Table commonRests(const std::vector<std::string_view>& a, const std::vector<std::string_view>& b) {
  Table table(a.size() + 1, std::vector<std::size_t>(b.size() + 1, 0));
  for (std::size_t i = a.size(); i-- > 0;) {
    for (std::size_t j = b.size(); j-- > 0;) {
      table[i][j] =
          a[i] == b[j] ? table[i + 1][j + 1] + 1 : std::max(table[i + 1][j], table[i][j + 1]);
    }
  }
  return table;
}

}  // namespace

std::string lineDiff(std::string_view expected, std::string_view actual) {
  if (expected == actual) return {};
  const auto a = linesOf(expected);
  const auto b = linesOf(actual);
  const Table common = commonRests(a, b);
  std::string diff;
  const auto show = [&diff](const char* mark, std::string_view line) {
    diff.append(mark).append(line).append("\n");
  };
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && a[i] == b[j]) {
      show("  ", a[i++]);
      ++j;
    } else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
      show("- ", a[i++]);
    } else {
      show("+ ", b[j++]);
    }
  }
  if (a == b) diff += "(only the end of the last line differs)\n";
  return diff;
}

}  // namespace velotap::test
