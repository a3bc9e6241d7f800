#include "adapters/linux/clicks/grab_trouble.hpp"

#include <cerrno>
#include <cstring>

namespace velotap {

std::string refusalText(GrabTrouble trouble, int error, const std::string& device) {
  const std::string left = ": its clicks are left as they are";
  const std::string why = std::string(" (") + std::strerror(error) + ")";
  switch (trouble) {
    case GrabTrouble::none:
      return {};
    case GrabTrouble::device:
      if (error == EBUSY) return "another program holds " + device + left + " (EBUSY)";
      return "cannot take over " + device + left + why;
    case GrabTrouble::mirror:
      if (error == EIO) return "the mirror image of " + device + " is lost again and again" + left;
      return "cannot make a mirror image of " + device + left + why;
    case GrabTrouble::guard:
      if (error == EIO) return "the guard of " + device + " ends again and again" + left;
      return "cannot have " + device + " guarded" + left + why;
  }
  return {};
}

std::string lossText(GrabTrouble trouble, const std::string& device) {
  switch (trouble) {
    case GrabTrouble::none:
    case GrabTrouble::device:
      return {};
    case GrabTrouble::mirror:
      return "lost the mirror image of " + device + ": given back, and tried anew";
    case GrabTrouble::guard:
      return "the guard of " + device + " has ended: given back, and tried anew";
  }
  return {};
}

}  // namespace velotap
