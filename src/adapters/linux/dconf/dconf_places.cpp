#include "adapters/linux/dconf/dconf_places.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace velotap {
namespace {

constexpr const char* kSchemaFile = "/glib-2.0/schemas/gschemas.compiled";

std::string valueOf(const DconfPlaces::Lookup& lookup, const char* name) {
  const char* value = lookup(name);
  return value != nullptr ? value : "";
}

std::string joined(std::string_view folder, std::string_view between, std::string_view name) {
  std::string path(folder);
  return path.append(between).append(name);
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) {
    if (!part.empty()) parts.push_back(part);
  }
  return parts;
}

/// A folder of the base directories: the variable, or its place below the home.
std::string userFolder(const DconfPlaces::Lookup& lookup, const char* variable,
                       const char* belowHome) {
  std::string folder = valueOf(lookup, variable);
  // Relative paths count as unset there.
  if (folder.starts_with('/')) return folder;
  const std::string home = valueOf(lookup, "HOME");
  return home.empty() ? "" : home + belowHome;
}

std::vector<std::string> dataFolders(const DconfPlaces::Lookup& lookup) {
  std::string folders = valueOf(lookup, "XDG_DATA_DIRS");
  if (folders.empty()) folders = "/usr/local/share:/usr/share";
  return split(folders, ':');
}

/// The lines of the profile in use; those of the built-in one when there is none.
std::vector<std::string> profile(const DconfPlaces::Lookup& lookup, const std::string& systemRoot) {
  const std::string named = valueOf(lookup, "DCONF_PROFILE");
  const std::string name = named.empty() ? "user" : named;
  std::vector<std::string> candidates;
  if (name.starts_with('/')) {
    candidates.push_back(name);
  } else {
    candidates.push_back(systemRoot + "/etc/dconf/profile/" + name);
    for (const auto& folder : dataFolders(lookup)) {
      candidates.push_back(joined(folder, "/dconf/profile/", name));
    }
  }
  for (const auto& candidate : candidates) {
    std::ifstream file(candidate);
    if (!file) continue;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
      line.erase(std::min(line.find('#'), line.size()));
      const auto begin = line.find_first_not_of(" \t\r");
      if (begin == std::string::npos) continue;
      lines.push_back(line.substr(begin, line.find_last_not_of(" \t\r") - begin + 1));
    }
    return lines;
  }
  return {"user-db:user"};
}

}  // namespace

DconfPlaces DconfPlaces::read(const Lookup& lookup, const std::string& systemRoot) {
  DconfPlaces places;
  const std::string config = userFolder(lookup, "XDG_CONFIG_HOME", "/.config");
  for (const auto& line : profile(lookup, systemRoot)) {
    const auto colon = line.find(':');
    if (colon == std::string::npos) continue;
    const std::string_view kind = std::string_view(line).substr(0, colon);
    const std::string name = line.substr(colon + 1);
    if (kind == "user-db" && !config.empty()) {
      places.databases.push_back(joined(config, "/dconf/", name));
    } else if (kind == "system-db") {
      places.databases.push_back(joined(systemRoot, "/etc/dconf/db/", name));
    } else if (kind == "file-db") {
      places.databases.push_back(name);
    }
  }
  const std::string own = valueOf(lookup, "GSETTINGS_SCHEMA_DIR");
  for (const auto& folder : split(own, ':'))
    places.schemas.push_back(folder + "/gschemas.compiled");
  const std::string data = userFolder(lookup, "XDG_DATA_HOME", "/.local/share");
  if (!data.empty()) places.schemas.push_back(data + kSchemaFile);
  for (const auto& folder : dataFolders(lookup)) places.schemas.push_back(folder + kSchemaFile);
  places.desktops = split(valueOf(lookup, "XDG_CURRENT_DESKTOP"), ':');
  return places;
}

}  // namespace velotap
