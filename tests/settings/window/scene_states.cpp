#include <array>

#include "scene.hpp"
#include "settings/window/values.hpp"

namespace velotap::test {
namespace {

constexpr auto kGeneral = PreferencesTab::general;
constexpr auto kGestures = PreferencesTab::gestures;

void showDetails(SceneTest& scene) {
  QMetaObject::invokeMethod(scene.page(), "showDetails");
  scene.awaitFrame();
}

void search(SceneTest& scene, const char* text) {
  scene.general().setQuery(QString::fromUtf8(text));
}

void trackpad(SceneTest& scene) {
  scene.gestures().setDevice(QStringLiteral("trackpad"));
}

void mouse(SceneTest& scene) {
  scene.gestures().setDevice(QStringLiteral("mouse"));
}

void openSheet(SceneTest& scene) {
  QMetaObject::invokeMethod(scene.page(), "openChooser");
  scene.awaitFrame();
}

// A text with another one in it.
std::string fill(SceneTest& scene, std::string_view key, std::string_view inner) {
  const Texts texts = scene.fixture->texts();
  return texts(key, {texts(inner)});
}

const std::array kStates{
    // Does it work?
    SceneState{"general-active", kGeneral},
    SceneState{"general-paused", kGeneral, [](Fixture& f) { f.generalFacts.enabled = false; },
               &showDetails},
    SceneState{"general-permission", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.accessibilityGranted = false;
                 f.generalFacts.listenersRunning = false;
               },
               &showDetails},
    SceneState{"general-listeners", kGeneral,
               [](Fixture& f) { f.generalFacts.listenersRunning = false; }, &showDetails},
    SceneState{"general-ready", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.connectedDevices = {DeviceClass::magicMouse, DeviceClass::trackpad};
               },
               &showDetails},
    SceneState{"general-no-devices", kGeneral,
               [](Fixture& f) { f.generalFacts.connectedDevices.clear(); }},
    // Startup and updates
    SceneState{"general-approval", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.loginItemStatus = LoginItemStatus::requiresApproval;
                 f.generalFacts.hideStatusBarIcon = true;
                 f.generalFacts.lastUpdateCheck.reset();
               }},
    SceneState{"general-impossible", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.loginItemStatus = LoginItemStatus::notFound;
                 f.generalFacts.updatesUnavailable = "updates.unavailable.feed";
               }},
    SceneState{"general-desktop", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.desktop = {
                     .frontTeller = FrontTeller::nobody,
                     .accessByRule = true,
                     .hasTray = false,
                     .mouseWithoutDriver = true,
                     .refused = {{.name = "Magic Mouse", .heldByAnother = true}}};
               }},
    SceneState{"general-extension", kGeneral,
               [](Fixture& f) {
                 f.generalFacts.accessibilityGranted = false;
                 f.generalFacts.desktop = {.frontTeller = FrontTeller::extension,
                                           .accessByRule = true};
               }},
    SceneState{"general-hide-question", kGeneral, nullptr,
               [](SceneTest& scene) { scene.pressText("Hide menu bar icon"); }, true},
    // Search
    SceneState{"search-results", kGeneral, nullptr, [](SceneTest& scene) { search(scene, "tap"); }},
    SceneState{"search-pane", kGeneral, nullptr, [](SceneTest& scene) { search(scene, "gest"); }},
    SceneState{"search-nothing", kGeneral, nullptr,
               [](SceneTest& scene) { search(scene, "xyzzy"); }},
    // Gestures
    SceneState{"gestures-mouse", kGestures, nullptr, &mouse},
    SceneState{"gestures-trackpad", kGestures, nullptr, &trackpad},
    SceneState{"gestures-desktop", kGestures,
               [](Fixture& f) {
                 f.gestureFacts.desktopClicks =
                     DesktopClicks{.threeFingerTap = true, .threeFingerClick = false};
               },
               &trackpad},
    SceneState{"gestures-twice", kGestures,
               [](Fixture& f) {
                 f.gestureFacts.desktopClicks =
                     DesktopClicks{.threeFingerTap = true, .threeFingerClick = true};
               },
               [](SceneTest& scene) {
                 trackpad(scene);
                 scene.gestures().setTrackpadMode(QStringLiteral("post"));
               }},
    SceneState{"gestures-unavailable", kGestures,
               [](Fixture& f) { f.gestureFacts.trackpadAvailable = false; }, &trackpad},
    SceneState{"gestures-explained", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 showDetails(scene);
               }},
    SceneState{"gestures-modified", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 scene.gestures().setTrigger(QStringLiteral("mouseRotate"), true);
                 scene.gestures().explain(QStringLiteral("mouseRotate"));
               }},
    SceneState{"gestures-filtered", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 showDetails(scene);
                 scene.gestures().setSection(QStringLiteral("more"));
                 scene.gestures().setEnabledOnly(true);
               }},
    SceneState{"gestures-none-left", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 scene.gestures().restoreDefaults();
                 scene.gestures().setModifiedOnly(true);
               }},
    SceneState{"gestures-question", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 scene.pressText("polish.gestures.disable.device");
               },
               true},
    SceneState{"gestures-undo", kGestures, nullptr,
               [](SceneTest& scene) {
                 mouse(scene);
                 scene.gestures().disableAll();
               }},
    SceneState{"gestures-inactive-paused", kGestures,
               [](Fixture& f) { f.gestureFacts.enabled = false; }, &mouse},
    SceneState{"gestures-inactive-permission", kGestures,
               [](Fixture& f) { f.gestureFacts.accessibilityGranted = false; }, &mouse},
    SceneState{"gestures-inactive-setup", kGestures,
               [](Fixture& f) {
                 f.gestureFacts.accessibilityGranted = false;
                 f.gestureFacts.permissionIsSetUpHere = true;
               },
               &trackpad},
    SceneState{"gestures-inactive-listeners", kGestures,
               [](Fixture& f) { f.gestureFacts.listenersRunning = false; }, &trackpad},
    SceneState{"gestures-practice", kGestures, nullptr,
               [](SceneTest& scene) { scene.pressText("Try a middle click"); }, true},
    // The others
    SceneState{"tuning", PreferencesTab::tuning},
    SceneState{"tuning-details", PreferencesTab::tuning, nullptr, &showDetails},
    SceneState{"tuning-custom", PreferencesTab::tuning, nullptr,
               [](SceneTest& scene) {
                 auto& pane = scene.tuning();
                 for (const char* key :
                      {"mouseTap3", "padTap3", "padTap4", "mousePinchZoom", "mouseClick1Center"}) {
                   scene.fixture->defaults().set(key, false);
                 }
                 pane.applyPreset(QStringLiteral("2"));
                 pane.setPaused(true);
                 pane.setFilter(QStringLiteral("device"), QStringLiteral("mouse"));
                 pane.setFilter(QStringLiteral("reason"), QStringLiteral("tooSoon"));
               }},
    SceneState{"tuning-no-taps", PreferencesTab::tuning, nullptr,
               [](SceneTest& scene) { scene.tuning().clearTaps(); }},
    SceneState{"apps", PreferencesTab::apps},
    SceneState{"apps-details", PreferencesTab::apps, nullptr, &showDetails},
    SceneState{
        "apps-missing", PreferencesTab::apps,
        [](Fixture& f) {
          f.defaults().set("ignoredApps", Value::strings({"com.apple.Safari", "org.example.Gone"}));
          f.defaults().set("keystrokeZoomApps",
                           Value::strings({"com.apple.Safari", "com.apple.TextEdit"}));
        },
        [](SceneTest& scene) {
          scene.apps().remove(QStringLiteral("zoom"), QStringLiteral("com.apple.TextEdit"));
          scene.apps().addSuggestion(QStringLiteral("com.vmware.fusion"));
        }},
    SceneState{"apps-nothing", PreferencesTab::apps, nullptr,
               [](SceneTest& scene) { scene.apps().setQuery(QStringLiteral("xyzzy")); }},
    SceneState{"apps-add", PreferencesTab::apps, nullptr,
               [](SceneTest& scene) {
                 scene.press(qt(fill(scene, "design.add.app.menu", "Velotap off in these apps")));
               },
               true},
    SceneState{"apps-installed", PreferencesTab::apps, nullptr,
               [](SceneTest& scene) {
                 scene.apps().openInstalled(QStringLiteral("zoom"));
                 scene.apps().toggleRunning(QStringLiteral("com.apple.TextEdit"));
                 openSheet(scene);
               },
               true},
    SceneState{"apps-running", PreferencesTab::apps, nullptr,
               [](SceneTest& scene) {
                 scene.apps().openRunning(QStringLiteral("ignored"));
                 openSheet(scene);
               },
               true},
    SceneState{"apps-question", PreferencesTab::apps, nullptr,
               [](SceneTest& scene) { scene.pressText("polish.apps.remove.visible"); }, true},
    SceneState{"practice-received", kGestures, nullptr,
               [](SceneTest& scene) {
                 scene.pressText("Try a middle click");
                 scene.practice().press(2);
                 scene.practice().release(2);
                 scene.awaitFrame();
               },
               true},
    SceneState{"practice-other", kGestures, nullptr,
               [](SceneTest& scene) {
                 scene.pressText("Try a middle click");
                 scene.practice().press(2);
                 scene.practice().release(2);
                 scene.practice().press(1);
                 scene.awaitFrame();
               },
               true},
    SceneState{"about", PreferencesTab::about},
    SceneState{"about-snapshot", PreferencesTab::about, nullptr,
               [](SceneTest& scene) {
                 scene.pressText("design.support.snapshot");
                 scene.about().copySnapshot();
                 scene.awaitFrame();
               },
               true},
    SceneState{"about-notices", PreferencesTab::about, nullptr,
               [](SceneTest& scene) { scene.pressText("Acknowledgements"); }, true},
};

}  // namespace

std::span<const SceneState> sceneStates() {
  return kStates;
}

}  // namespace velotap::test
