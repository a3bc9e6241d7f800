#include "localization/strings_file.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/utf8.hpp"

namespace velotap {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool isBareKeyCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '_' || c == '-';
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

void appendUtf8(std::string& text, std::uint32_t code) {
  const auto add = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0U | (code >> 6U));
    add(0x80U | (code & 0x3FU));
  } else if (code < 0x10000) {
    add(0xE0U | (code >> 12U));
    add(0x80U | ((code >> 6U) & 0x3FU));
    add(0x80U | (code & 0x3FU));
  } else {
    add(0xF0U | (code >> 18U));
    add(0x80U | ((code >> 12U) & 0x3FU));
    add(0x80U | ((code >> 6U) & 0x3FU));
    add(0x80U | (code & 0x3FU));
  }
}

class Parser {
 public:
  explicit Parser(std::string_view source) : source_(source) {}

  StringsFile parse() {
    StringsFile file;
    while (skipBlank() && !atEnd()) {
      if (!pair(file)) break;
    }
    if (error_) {
      file.texts.clear();
      file.repeated.clear();
      file.error = std::move(error_);
    }
    return file;
  }

 private:
  [[nodiscard]] bool atEnd() const { return position_ >= source_.size(); }
  [[nodiscard]] bool ahead(std::string_view text) const {
    return source_.substr(position_, text.size()) == text;
  }

  [[nodiscard]] StringsError at(std::size_t where, std::string message) const {
    const auto before = source_.substr(0, where);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    return {.line = static_cast<int>(lines) + 1, .message = std::move(message)};
  }
  bool fail(std::string message) { return failAt(position_, std::move(message)); }
  bool failAt(std::size_t where, std::string message) {
    error_ = at(where, std::move(message));
    return false;
  }

  // White space and comments.
  bool skipBlank() {
    while (!atEnd()) {
      if (isSpace(source_[position_])) {
        ++position_;
      } else if (ahead("//")) {
        position_ = std::min(source_.find('\n', position_), source_.size());
      } else if (ahead("/*")) {
        const auto end = source_.find("*/", position_ + 2);
        if (end == std::string_view::npos) return fail("a comment without end");
        position_ = end + 2;
      } else {
        break;
      }
    }
    return true;
  }

  bool expect(char c) {
    if (!skipBlank()) return false;
    if (atEnd() || source_[position_] != c) {
      return fail(std::string("expected '") + c + (atEnd() ? "' but the file ends" : "'"));
    }
    ++position_;
    return true;
  }

  bool pair(StringsFile& file) {
    const std::size_t start = position_;
    std::string key;
    std::string text;
    if (!readKey(key) || !expect('=') || !skipBlank() || !quoted(text) || !expect(';')) {
      return false;
    }
    if (!file.texts.emplace(key, std::move(text)).second) {
      file.repeated.push_back(at(start, "the key \"" + key + "\" occurs twice"));
    }
    return true;
  }

  bool readKey(std::string& key) {
    if (source_[position_] == '"') return quoted(key);
    while (!atEnd() && isBareKeyCharacter(source_[position_])) key.push_back(source_[position_++]);
    return !key.empty() || fail("expected a key");
  }

  bool quoted(std::string& text) {
    if (atEnd() || source_[position_] != '"') return fail("expected a text in quotes");
    const std::size_t start = position_++;
    while (!atEnd()) {
      const char c = source_[position_++];
      if (c == '"') return true;
      if (c != '\\') {
        text.push_back(c);
      } else if (!escape(text)) {
        return false;
      }
    }
    return failAt(start, "a text without end");
  }

  bool escape(std::string& text) {
    if (atEnd()) return fail("the file ends in an escape");
    const char c = source_[position_++];
    switch (c) {
      case '"':
      case '\\':
      case '\'':
        text.push_back(c);
        return true;
      case 'n':
        text.push_back('\n');
        return true;
      case 'r':
        text.push_back('\r');
        return true;
      case 't':
        text.push_back('\t');
        return true;
      case '0':
        text.push_back('\0');
        return true;
      case 'U':
      case 'u':
        return unicodeEscape(text);
      default:
        return fail(std::string("unknown escape \\") + c);
    }
  }

  bool unicodeEscape(std::string& text) {
    std::uint32_t code = 0;
    if (!fourDigits(code)) return false;
    if (code >= 0xDC00 && code <= 0xDFFF) return fail("half of a character");
    if (code >= 0xD800 && code <= 0xDBFF) {
      std::uint32_t low = 0;
      if (!ahead("\\U") && !ahead("\\u")) return fail("half of a character");
      position_ += 2;
      if (!fourDigits(low)) return false;
      if (low < 0xDC00 || low > 0xDFFF) return fail("half of a character");
      code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
    }
    appendUtf8(text, code);
    return true;
  }

  bool fourDigits(std::uint32_t& code) {
    for (int i = 0; i < 4; ++i) {
      const int digit = atEnd() ? -1 : hexDigit(source_[position_]);
      if (digit < 0) return fail("expected four hexadecimal digits");
      code = code * 16 + static_cast<std::uint32_t>(digit);
      ++position_;
    }
    return true;
  }

  std::string_view source_;
  std::size_t position_ = 0;
  std::optional<StringsError> error_;
};

}  // namespace

StringsFile parseStrings(std::string_view source) {
  if (source.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    source.remove_prefix(kByteOrderMark.size());
  }
  if (!isUtf8(source)) {
    return {.texts = {}, .error = StringsError{.line = 1, .message = "not UTF-8"}, .repeated = {}};
  }
  return Parser(source).parse();
}

}  // namespace velotap
