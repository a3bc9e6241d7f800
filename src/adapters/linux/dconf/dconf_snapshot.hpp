// The settings of a GNOME-like desktop as they stand at one moment.
//
// Reads the databases and the compiled schemas themselves. The ordinary ways all cost more than
// they give here: the settings library brings some megabytes and threads of its own into a
// process that otherwise needs neither, a child process for each question takes twenty
// milliseconds, and the portal does not tell what touchpads are set to. The files have had this
// form since 2011, and a file that has another gives nothing.
//
// A snapshot holds the files' bytes: take what is needed and let it go. Any thread; does I/O only
// while loading.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/linux/dconf/dconf_places.hpp"
#include "adapters/linux/dconf/gvariant.hpp"

namespace velotap {

class DconfSnapshot {
 public:
  [[nodiscard]] static DconfSnapshot load(const DconfPlaces& places);

  /// What is set, or the default of the desktop or of the schema, of a schema at its ordinary
  /// path. Nothing when the schema is not installed or has no such key: the desktop does not
  /// have this setting then, whatever is stored.
  [[nodiscard]] std::optional<bool> boolean(std::string_view schema, std::string_view key) const;
  [[nodiscard]] std::optional<std::string> text(std::string_view schema,
                                                std::string_view key) const;
  [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view schema,
                                                              std::string_view key) const;
  [[nodiscard]] std::optional<std::vector<std::pair<std::string, std::string>>> pairs(
      std::string_view schema, std::string_view key) const;

 private:
  [[nodiscard]] std::optional<GVariant> value(std::string_view schema, std::string_view key) const;
  [[nodiscard]] std::optional<GVariant> defaultOf(std::string_view schema,
                                                  std::string_view key) const;
  [[nodiscard]] std::optional<GVariant> stored(const std::string& path) const;

  std::vector<std::string> databases_;  ///< the bytes of each; empty for one that is not there
  std::vector<std::string> schemas_;
  std::vector<std::string> desktops_;
};

}  // namespace velotap
