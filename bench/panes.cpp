// What the panes of the settings window cost with two hundred rules, five hundred installed and a
// hundred running applications: to show one, to draw a frame while it scrolls, to answer a letter
// typed into a search field. Each beside the same of an empty pane, because times of one machine
// mean nothing on another. Prints numbers and judges none.

#include <time.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "config/settings_keys.hpp"
#include "settings/capture/fixture.hpp"
#include "settings/window/settings_window.hpp"

namespace velotap {
namespace {

constexpr int kRules = 200;
constexpr int kInstalled = 500;
constexpr int kRunning = 100;
constexpr int kFrames = 60;

std::string identifier(int number) {
  return "org.example.Program" + std::to_string(number);
}

class ManyApplications final : public Applications {
 public:
  ManyApplications() {
    for (int i = 0; i < kInstalled; ++i) {
      installed_.push_back(
          {identifier(i), "Program " + std::to_string(i), {}, "/usr/share/" + identifier(i)});
    }
  }
  std::optional<ApplicationBundle> find(const std::string& bundleId) override {
    const auto found =
        std::find_if(installed_.begin(), installed_.end(),
                     [&](const ApplicationBundle& each) { return each.bundleId == bundleId; });
    return found == installed_.end() ? std::nullopt : std::optional(*found);
  }
  std::vector<ApplicationBundle> installed() override { return installed_; }
  std::vector<RunningInstance> running() override {
    std::vector<RunningInstance> instances;
    for (int i = 0; i < kRunning; ++i) {
      instances.push_back({identifier(400 + i), "Program " + std::to_string(400 + i)});
    }
    return instances;
  }

 private:
  std::vector<ApplicationBundle> installed_;
};

// Every second rule is for an application that is installed.
ValueMap manyRules() {
  ValueMap settings = captureSettings();
  std::vector<std::string> ignored;
  std::vector<std::string> zoom;
  for (int i = 0; i < kRules / 2; ++i) {
    ignored.push_back(identifier(i * 10));
    zoom.push_back(identifier(i * 10 + 3));
  }
  settings.insert_or_assign(std::string(keys::kIgnoredApps), Value::strings(ignored));
  settings.insert_or_assign(std::string(keys::kKeystrokeZoomApps), Value::strings(zoom));
  return settings;
}

AppsEffects appsEffects(Config& config, Applications& applications) {
  return {.config = config,
          .applications = applications,
          .options = {},
          .ownBundleID = "app.norwend.velotap",
          .texts =
              [] {
                const std::array<std::string, 1> preferred{"en"};
                return Texts(Localization::shared().bundle(preferred), RegionalFormat("en_US"));
              },
          .announce = [](const std::string&) {},
          .choose = [](const std::string&) { return std::vector<std::string>(); },
          .copy = [](const std::string&) { return true; },
          .reveal = [](const std::string&) {},
          .icon = [](const std::string&) { return std::string(); }};
}

// Of this thread, which does all of it: what others do with the processor meanwhile does not count.
double threadMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double milliseconds(const std::function<void()>& work) {
  const double begin = threadMilliseconds();
  work();
  return threadMilliseconds() - begin;
}

double median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times.at(times.size() / 2);
}

struct Costs {
  double show = 0;    // until the first picture of the pane
  double frame = 0;   // median
  double worst = 0;   // frame
  double letter = 0;  // worst of a query that is typed, with its picture
};

class Bench {
 public:
  explicit Bench(ViewContext& context, bool full)
      : fixture_("en", full ? manyRules() : ValueMap()),
        config_(fixture_.defaults(), notifications_),
        settings_(context,
                  SettingsWindow::Effects{
                      .texts = [this] { return fixture_.texts(); },
                      .makePanes = [this, full](PanesObject& panes) { make(panes, full); },
                      .observe = [](std::function<void()>) { return std::vector<Observation>(); },
                      .frameFile = {}}) {}

  Costs measure(PreferencesTab tab) {
    Costs costs;
    settings_.show(tab == PreferencesTab::about ? PreferencesTab::general : PreferencesTab::about);
    draw();
    costs.show = milliseconds([this, tab] {
      settings_.show(tab);
      draw();
    });
    QQuickItem* const pane = scrolling(settings_.view()->rootObject());
    std::vector<double> frames;
    for (int i = 0; i < kFrames; ++i) {
      frames.push_back(milliseconds([this, pane, i] {
        if (pane != nullptr) pane->setProperty("contentY", 10 * i);
        draw();
      }));
    }
    costs.frame = median(frames);
    costs.worst = *std::max_element(frames.begin(), frames.end());
    if (tab == PreferencesTab::apps) {
      auto* const apps = qobject_cast<AppsObject*>(settings_.panes()->apps);
      costs.letter = typing([apps](const QString& query) { apps->setQuery(query); });
    } else if (tab == PreferencesTab::general) {
      auto* const general = qobject_cast<GeneralObject*>(settings_.panes()->general);
      costs.letter = typing([general](const QString& query) { general->setQuery(query); });
    } else if (tab == PreferencesTab::gestures) {
      auto* const gestures = qobject_cast<GesturesObject*>(settings_.panes()->gestures);
      costs.letter = typing([gestures](const QString& query) { gestures->setQuery(query); });
    }
    return costs;
  }

  Costs measureChooser(AppsOffered offered) {
    Costs costs;
    settings_.show(PreferencesTab::apps);
    draw();
    auto* const apps = qobject_cast<AppsObject*>(settings_.panes()->apps);
    costs.show = milliseconds([this, apps, offered] {
      if (offered == AppsOffered::running) {
        apps->openRunning(QStringLiteral("ignored"));
      } else {
        apps->openInstalled(QStringLiteral("ignored"));
      }
      QVariant page;
      QMetaObject::invokeMethod(settings_.view()->rootObject(), "page",
                                Q_RETURN_ARG(QVariant, page),
                                Q_ARG(QVariant, static_cast<int>(PreferencesTab::apps)));
      QMetaObject::invokeMethod(page.value<QObject*>(), "openChooser");
      draw();
    });
    costs.letter = typing([apps](const QString& query) { apps->setRunningQuery(query); });
    return costs;
  }

 private:
  void make(PanesObject& panes, bool full) {
    fixture_.makePanes(panes);
    if (!full) return;
    delete panes.apps;
    panes.apps = new AppsObject(appsEffects(config_, applications_), &panes);
  }
  // A frame whole: what waits to be done before it, layout, scene and pixels.
  void draw() {
    QCoreApplication::processEvents();
    static_cast<void>(settings_.view()->grabWindow());
  }
  static QQuickItem* scrolling(QQuickItem* root) {
    if (root->isVisible() && root->inherits("QQuickFlickable") &&
        root->property("contentHeight").toDouble() > root->height()) {
      return root;
    }
    for (QQuickItem* child : root->childItems()) {
      if (!child->isVisible()) continue;
      if (QQuickItem* const found = scrolling(child)) return found;
    }
    return nullptr;
  }
  double typing(const std::function<void(const QString&)>& type) {
    double worst = 0;
    for (const char* query : {"p", "pr", "pro", "prog", "program 1", "program 12", "xyz", ""}) {
      worst = std::max(worst, milliseconds([this, &type, query] {
                         type(QString::fromLatin1(query));
                         draw();
                       }));
    }
    return worst;
  }

  Fixture fixture_;
  NotificationCenter notifications_;
  Config config_;
  ManyApplications applications_;
  SettingsWindow settings_;
};

void print(const char* what, const Costs& full, const Costs& empty) {
  const auto row = [what](const char* cost, double value, double reference) {
    if (value == 0) return;
    std::printf("%-9s %-12s %8.2f ms   empty %7.2f ms   ratio %6.2f\n", what, cost, value,
                reference, reference > 0 ? value / reference : 0.0);
  };
  row("show", full.show, empty.show);
  row("frame", full.frame, empty.frame);
  row("worst frame", full.worst, empty.worst);
  row("letter", full.letter, empty.letter);
}

int run() {
  ViewContext context(true);
  constexpr std::array kPanes = {std::pair("general", PreferencesTab::general),
                                 std::pair("gestures", PreferencesTab::gestures),
                                 std::pair("tuning", PreferencesTab::tuning),
                                 std::pair("apps", PreferencesTab::apps)};
  for (const auto& [name, tab] : kPanes) {
    const Costs empty = Bench(context, false).measure(tab);
    print(name, Bench(context, true).measure(tab), empty);
  }
  for (const auto& [name, offered] : {std::pair("running", AppsOffered::running),
                                      std::pair("installed", AppsOffered::installed)}) {
    const Costs empty = Bench(context, false).measureChooser(offered);
    print(name, Bench(context, true).measureChooser(offered), empty);
  }
  return 0;
}

}  // namespace
}  // namespace velotap

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  const QGuiApplication application(argc, argv);
  return velotap::run();
}
