// Which desktop this session is, and where that desktop keeps what it knows of touchpads.
//
// Read from the environment once; a plain value afterwards.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/linux/dconf/dconf_places.hpp"

namespace velotap {

/// `xServer`: any desktop on X but GNOME's relatives; the server knows what it set.
enum class DesktopKind { gnome, kde, xServer, other };

struct DesktopPlaces {
  DesktopKind kind = DesktopKind::other;
  DconfPlaces dconf;
  std::string touchpadSchema;              ///< of a relative of GNOME
  std::vector<std::string> kdeInputFiles;  ///< the system's first, the user's last
  bool kdeTapsByDefault = false;
  std::string display;  ///< of the X server

  [[nodiscard]] static DesktopPlaces read(const DconfPlaces::Lookup& lookup);
};

}  // namespace velotap
