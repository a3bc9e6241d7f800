// Starting at login, as desktops without a system of their own have agreed on: a desktop entry in
// the user's autostart folder.
//
// Main thread. The desktop's own tools switch an entry off by a line inside it; only they, or the
// person, switch it on again. The file is replaced as a whole, so that a full disk costs nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/login_item.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

/// What the text of an autostart entry amounts to.
struct AutostartEntry {
  bool valid = false;     ///< it is an application with a command
  bool disabled = false;  ///< a tool or the person switched it off
  std::string program;    ///< what it starts, unquoted
};
[[nodiscard]] AutostartEntry parseAutostartEntry(std::string_view text);

/// The entry that starts `program`, with every character that could mean something quoted.
[[nodiscard]] std::string autostartEntry(std::string_view program);

class AutostartItem final : public LoginItemService {
 public:
  /// `folder` is the user's autostart folder; `program` the path of what is to be started.
  AutostartItem(std::string folder, std::string program, UrlOpener& urls);

  [[nodiscard]] LoginItemStatus status() override;
  [[nodiscard]] std::optional<std::string> registerProgram() override;
  [[nodiscard]] std::optional<std::string> unregisterProgram() override;
  /// The desktop's page, or the folder itself where it has none.
  void openSettings() override;

  [[nodiscard]] const std::string& file() const noexcept { return file_; }

 private:
  std::string folder_;
  std::string file_;
  std::string program_;
  UrlOpener& urls_;
};

}  // namespace velotap
