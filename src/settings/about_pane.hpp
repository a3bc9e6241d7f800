// The About pane: what this program is, whom to write to, and where to read more.
//
// Pure values and decisions; effects are passed in. Main thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "localization/texts.hpp"

namespace velotap {

/// What the build says of itself.
struct BuildFacts {
  std::string version;  ///< such as "1.4.2"
  std::string build;    ///< such as "318"
  std::string notice;   ///< the copyright line, shown as it stands
};

enum class AboutLink { website, privacyPolicy, terms };
[[nodiscard]] std::string aboutLinkUrl(AboutLink link);

struct AboutView {
  std::string name;
  std::string tagline;
  std::string versionLine;
  std::string notice;
  std::string checkForUpdates;
  bool canCheckForUpdates = true;
  std::string contactSupport;
  std::string supportSnapshot;
  std::string copyAddress;
  std::vector<std::pair<AboutLink, std::string>> links;
  std::string acknowledgements;
};

/// "Version 1.4.2 (318)"
[[nodiscard]] std::string versionLine(const BuildFacts& build, const Texts& texts);
[[nodiscard]] AboutView aboutView(const BuildFacts& build, bool canCheckForUpdates,
                                  const Texts& texts);

struct SupportContact {
  /// What is shown after somebody asked for support; the text is the key of the sentence.
  enum class Feedback { copied, openFailed, copyFailed };
  [[nodiscard]] static std::string_view key(Feedback feedback) noexcept;

  /// A letter to the support address with the version as its subject.
  [[nodiscard]] static std::string mailURL(std::string_view versionLine);

  struct Effects {
    /// Tells now or later whether a program took the address; whom to tell may be empty.
    std::function<void(const std::string& url, std::function<void(bool taken)>)> open;
    std::function<bool(const std::string& text)> copy;
  };
  /// Opens a letter; where no program does, copies the address. Tells, now or later, what to say,
  /// in this order.
  static void contact(std::string_view versionLine, const Effects& effects,
                      std::function<void(const std::vector<Feedback>&)> tell);
  /// Copies the address because somebody asked for just that.
  [[nodiscard]] static Feedback copyAddress(const Effects& effects);
};

/// The notices of what the program is linked with.
struct AcknowledgementsView {
  std::string title;
  std::string hint;  ///< how to search in them
  std::string search;
  std::string text;  ///< empty when the notices are missing
  std::string done;
};
[[nodiscard]] AcknowledgementsView acknowledgementsView(std::string_view notices,
                                                        const Texts& texts);

}  // namespace velotap
