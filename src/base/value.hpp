// A value of the settings store: what a preferences file can hold, with its type kept.
//
// Booleans, integers and reals are different types here on purpose: a stored `true` is not the
// number 1, and readers of numbers must be able to refuse it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace velotap {

class Value;
using ValueArray = std::vector<Value>;
using ValueMap = std::map<std::string, Value>;

class Value {
 public:
  Value(bool v) : data_(v) {}                      // NOLINT: conversions are the point of the type
  Value(std::int64_t v) : data_(v) {}              // NOLINT
  Value(int v) : data_(std::int64_t{v}) {}         // NOLINT
  Value(double v) : data_(v) {}                    // NOLINT
  Value(std::string v) : data_(std::move(v)) {}    // NOLINT
  Value(const char* v) : data_(std::string(v)) {}  // NOLINT
  Value(ValueArray v) : data_(std::move(v)) {}     // NOLINT
  Value(ValueMap v) : data_(std::move(v)) {}       // NOLINT
  /// An array of texts, the form of every list setting.
  static Value strings(const std::vector<std::string>& texts) {
    return ValueArray(texts.begin(), texts.end());
  }

  [[nodiscard]] const bool* boolean() const { return std::get_if<bool>(&data_); }
  [[nodiscard]] const std::int64_t* integer() const { return std::get_if<std::int64_t>(&data_); }
  [[nodiscard]] const double* real() const { return std::get_if<double>(&data_); }
  [[nodiscard]] const std::string* text() const { return std::get_if<std::string>(&data_); }
  [[nodiscard]] const ValueArray* array() const { return std::get_if<ValueArray>(&data_); }
  [[nodiscard]] const ValueMap* map() const { return std::get_if<ValueMap>(&data_); }

  friend bool operator==(const Value& a, const Value& b) { return a.data_ == b.data_; }

 private:
  std::variant<bool, std::int64_t, double, std::string, ValueArray, ValueMap> data_;
};

}  // namespace velotap
