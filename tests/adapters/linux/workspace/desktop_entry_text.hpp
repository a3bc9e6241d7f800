// Desktop entries as applications install them.
#pragma once

#include <string>

namespace velotap::test {

/// The text of an entry with this name and these further lines.
inline std::string desktopEntry(const std::string& name, const std::string& more = {}) {
  return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
}

}  // namespace velotap::test
