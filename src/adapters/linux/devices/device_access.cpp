#include "adapters/linux/devices/device_access.hpp"

#include <unistd.h>

#include <cerrno>

#include "adapters/linux/devices/udev_devices.hpp"

namespace velotap {
namespace {

constexpr const char* kUinput = "/dev/uinput";

}  // namespace

AccessProblems findAccessProblems() {
  AccessProblems problems;
  for (const std::string& node : surfaceNodes()) {
    if (::access(node.c_str(), R_OK) != 0) problems.unreadableNodes.push_back(node);
  }
  if (::access(kUinput, W_OK) != 0) {
    (errno == ENOENT ? problems.uinputMissing : problems.uinputDenied) = true;
  }
  return problems;
}

std::string AccessProblems::text() const {
  std::string sentence;
  const auto add = [&sentence](const std::string& part) {
    if (!sentence.empty()) sentence += "; ";
    sentence += part;
  };
  if (uinputMissing) add("/dev/uinput does not exist (load the uinput module)");
  if (uinputDenied) add("/dev/uinput may not be written");
  for (const std::string& node : unreadableNodes) add(node + " may not be read");
  return sentence;
}

}  // namespace velotap
