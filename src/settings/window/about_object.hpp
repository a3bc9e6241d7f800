// The About pane as QML sees it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/about_pane.hpp"
#include "settings/support_snapshot.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// What the pane reaches.
struct AboutEffects {
  std::function<Texts()> texts;
  std::function<SupportFacts()> facts;
  std::function<bool()> canCheckForUpdates;
  std::function<void()> checkForUpdates;
  SupportContact::Effects contact;
  /// Asks where to save and writes the text there, as a whole; true also when the person changed
  /// their mind.
  std::function<bool(std::string_view name, const std::string& text)> save;
  std::function<std::string()> notices;
};

class AboutObject : public PaneObject {
  Q_OBJECT

 public:
  explicit AboutObject(AboutEffects effects, QObject* parent = nullptr);

  void refresh() override;

  Q_INVOKABLE void checkForUpdates();
  Q_INVOKABLE void contactSupport();
  Q_INVOKABLE void copyAddress();
  Q_INVOKABLE void openPage(const QString& page);
  Q_INVOKABLE void openSnapshot();
  Q_INVOKABLE void copySnapshot();
  Q_INVOKABLE void saveSnapshot();
  Q_INVOKABLE void openNotices();

 private:
  void showFeedback(const std::vector<SupportContact::Feedback>& feedback);

  AboutEffects effects_;
  std::vector<SupportContact::Feedback> feedback_;
  std::string_view snapshotFeedback_;  // a key, so that it follows the language
  std::string notices_;                // read when they are shown
};

}  // namespace velotap
