// What the settings window costs: until its first picture, in memory while it is open and after it
// was closed, and while nobody touches it.
//
//   measure_window [OPENINGS] [IDLE-SECONDS]
//
// Fictional panes, so that nothing but the window is measured; the platform is whichever Qt is told
// (QT_QPA_PLATFORM=offscreen, or a display). Prints one line for each number.

#include <malloc.h>
#include <sys/resource.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "settings/capture/fixture.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {
namespace {

constexpr std::array<const char*, 5> kTabs = {"general", "gestures", "tuning", "apps", "about"};

/// A line of /proc/self/FILE that begins with `name`, as the number in it.
long numberOf(const char* file, const std::string& name) {
  std::ifstream input(std::string("/proc/self/") + file);
  std::string word;
  while (input >> word) {
    long number = 0;
    if (word == name && input >> number) return number;
  }
  return 0;
}

struct Memory {
  double resident = 0;   // megabytes
  double anonymous = 0;  // of it, what is the process's alone
};

Memory memory() {
  return {static_cast<double>(numberOf("smaps_rollup", "Rss:")) / 1024,
          static_cast<double>(numberOf("smaps_rollup", "Anonymous:")) / 1024};
}

double processorMs() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

void print(const char* what, const Memory& use) {
  std::printf("%-24s %7.1f MB resident, %5.1f MB anonymous\n", what, use.resident, use.anonymous);
}

class Measurement {
 public:
  Measurement()
      : window_(context_, {.texts = [this] { return fixture_.texts(); },
                           .makePanes = [this](PanesObject& panes) { fixture_.makePanes(panes); },
                           .observe = [](auto) { return std::vector<Observation>(); },
                           .frameFile = {},
                           .closed = [] { malloc_trim(0); }}) {
    // Texts and fictional taps are the program's, not the window's.
    static_cast<void>(fixture_.texts()("General"));
  }

  /// Milliseconds from the wish until the first picture is on its way to the screen.
  double open(PreferencesTab tab) {
    QElapsedTimer clock;
    clock.start();
    window_.show(tab);
    QEventLoop shown;
    QObject::connect(window_.view(), &QQuickWindow::frameSwapped, &shown, &QEventLoop::quit,
                     Qt::QueuedConnection);
    shown.exec();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
  }

  void close() {
    window_.close();
    while (window_.isOpen()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    settle(0.2);
  }

  static void settle(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, &QEventLoop::quit);
    loop.exec();
  }

  /// Wakeups and processor time of an open window, a second, while nothing happens.
  void idle(std::size_t tab, double seconds) {
    open(static_cast<PreferencesTab>(tab));
    settle(1);  // animations of the opening
    const long wakes = numberOf("status", "voluntary_ctxt_switches:");
    const double used = processorMs();
    settle(seconds);
    std::printf(
        "idle, %-18s %7.2f wakeups/s, %5.2f ms of processor/s\n", kTabs.at(tab),
        static_cast<double>(numberOf("status", "voluntary_ctxt_switches:") - wakes) / seconds,
        (processorMs() - used) / seconds);
    close();
  }

 private:
  ViewContext context_{false};
  Fixture fixture_{"en_US"};
  SettingsWindow window_;
};

void measure(int openings, double seconds) {
  Measurement measurement;
  print("before the first", memory());
  std::vector<double> times;
  for (int i = 0; i < openings; ++i) {
    const double ms = measurement.open(PreferencesTab::general);
    if (i == 0) std::printf("%-24s %7.1f ms\n", "first opening", ms);
    times.push_back(ms);
    Measurement::settle(0.3);
    if (i == 0) print("open", memory());
    measurement.close();
    if (i == 0) print("closed", memory());
  }
  print("closed for the last time", memory());
  std::sort(times.begin(), times.end());
  std::printf("%-24s %7.1f ms median, %.1f ms worst of %d\n", "opening", times.at(times.size() / 2),
              times.back(), openings);
  for (std::size_t tab = 0; tab < kTabs.size(); ++tab) measurement.idle(tab, seconds);
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const int openings = argc > 1 ? std::atoi(argv[1]) : 10;
  const double seconds = argc > 2 ? std::atof(argv[2]) : 10;
  velotap::measure(std::max(1, openings), std::max(1.0, seconds));
  return 0;
}
