// Is there a place for a status item, and if not yet, when?
//
// Qt decides once, at its first status item, whether the session has a host, and never looks again.
// So nobody may make one, or ask Qt, before a host exists. At the start of a session the program is
// often quicker than the panel: this waits. Main thread.
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

namespace velotap {

class TrayHost : public QObject {
  Q_OBJECT

 public:
  explicit TrayHost(QObject* parent = nullptr);

  /// Looks now and waits until a host appears. `appeared` comes once, perhaps inside this call;
  /// `missing` at most once, when none has come after a while, and waiting goes on.
  void await();
  [[nodiscard]] bool hasAppeared() const { return appeared_; }

 signals:
  void appeared();
  void missing();

 private:
  void look();

  QDBusServiceWatcher watcher_;
  QTimer lookAgain_;
  QTimer patience_;
  bool appeared_ = false;
};

}  // namespace velotap
