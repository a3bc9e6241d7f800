// Plain C++ values as QML reads them.
#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <initializer_list>
#include <string>
#include <string_view>

namespace velotap {

[[nodiscard]] inline QString qt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// One entry of a map.
struct Field {
  const char* name;
  QVariant value;

  Field(const char* n, std::string_view text) : name(n), value(qt(text)) {}
  Field(const char* n, const std::string& text) : name(n), value(qt(text)) {}
  Field(const char* n, const char* text) : name(n), value(qt(text)) {}
  Field(const char* n, const QString& text) : name(n), value(text) {}
  Field(const char* n, bool on) : name(n), value(on) {}
  Field(const char* n, int number) : name(n), value(number) {}
  Field(const char* n, double number) : name(n), value(number) {}
  Field(const char* n, const QVariantMap& fields) : name(n), value(fields) {}
  Field(const char* n, const QVariantList& list) : name(n), value(list) {}
};

[[nodiscard]] inline QVariantMap fields(std::initializer_list<Field> list) {
  QVariantMap map;
  for (const Field& field : list) map.insert(QString::fromLatin1(field.name), field.value);
  return map;
}

/// One choice of a picker.
[[nodiscard]] inline QVariantMap choice(std::string_view value, std::string_view label) {
  return fields({{"value", value}, {"label", label}});
}

}  // namespace velotap
