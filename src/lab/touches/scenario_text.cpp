#include "lab/touches/scenario_text.hpp"

#include <array>
#include <charconv>

#include "base/log_text.hpp"
#include "input/device_class.hpp"

namespace velotap::lab {
namespace {

// Shortest text that reads back as the same single-precision number.
std::string shortest(float value) {
  std::array<char, 64> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

void addPart(std::string& text, const char* key, float value, float standard) {
  if (value != standard) text += std::string(";") + key + "=" + shortest(value);
}

std::string touchText(const MTTouch& touch) {
  std::string text = std::to_string(touch.identifier) + ":" + shortest(touch.position.x) + "," +
                     shortest(touch.position.y);
  if (touch.stage != 4) text += ";stage=" + std::to_string(touch.stage);
  addPart(text, "vx", touch.velocity.x, 0);
  addPart(text, "vy", touch.velocity.y, 0);
  addPart(text, "size", touch.size, 1);
  addPart(text, "density", touch.density, 1);
  addPart(text, "pressure", touch.pressure, 0);
  return text + ";mx=" + shortest(touch.millimetres.x) + ";my=" + shortest(touch.millimetres.y);
}

}  // namespace

std::string_view scenarioDeviceName(const SurfaceModel& model) {
  return classifyDevice(model.familyId) == DeviceClass::magicMouse ? "mouse" : "pad";
}

std::string scenarioHead(std::string_view device, const SurfaceModel& model,
                         std::string_view comment) {
  std::string head = "velotap-scenario 1\n";
  if (!comment.empty()) head += "# " + std::string(comment) + "\n";
  return head + "device " + std::string(device) + " family=" + std::to_string(model.familyId) +
         " builtin=" + (model.builtIn ? "true" : "false") +
         " size=" + shortest(static_cast<float>(model.widthMm())) + "x" +
         shortest(static_cast<float>(model.heightMm())) + "\nfront com.example.editor Editor\n";
}

std::string scenarioFrame(std::string_view device, double time, std::span<const MTTouch> touches) {
  std::string line = "@" + fixedText(time, 6) + " frame " + std::string(device);
  if (touches.empty()) return line + " -\n";
  for (const MTTouch& touch : touches) line += " " + touchText(touch);
  return line + "\n";
}

}  // namespace velotap::lab
