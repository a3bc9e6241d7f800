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
    SceneState{"apps", PreferencesTab::apps},
    SceneState{"apps-details", PreferencesTab::apps, nullptr, &showDetails},
    SceneState{"about", PreferencesTab::about},
};

}  // namespace

std::span<const SceneState> sceneStates() {
  return kStates;
}

}  // namespace velotap::test
