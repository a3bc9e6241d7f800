#import <AppKit/AppKit.h>

#include <cstring>

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "adapters/macos/cocoa/foundation_text.hpp"

namespace velotap {
namespace {

std::optional<CocoaApplication> told(NSRunningApplication* application) {
  if (application == nil) return std::nullopt;
  return CocoaApplication{
      .bundleId = textOf(application.bundleIdentifier),
      .name = textOf(application.localizedName),
      .bundlePath = textOf(application.bundleURL.path),
      .regular = application.activationPolicy == NSApplicationActivationPolicyRegular};
}

NSNotificationName nameOf(WorkspaceNotice notice) {
  switch (notice) {
    case WorkspaceNotice::willSleep:
      return NSWorkspaceWillSleepNotification;
    case WorkspaceNotice::didWake:
      return NSWorkspaceDidWakeNotification;
    case WorkspaceNotice::didActivate:
      return NSWorkspaceDidActivateApplicationNotification;
  }
  return nil;
}

std::optional<CocoaApplication> applicationIn(NSNotification* notification) {
  id application = notification.userInfo[NSWorkspaceApplicationKey];
  if (![application isKindOfClass:[NSRunningApplication class]]) return std::nullopt;
  return told(application);
}

std::optional<std::string> entry(NSBundle* bundle, NSString* key) {
  id value = [bundle objectForInfoDictionaryKey:key];
  if (![value isKindOfClass:[NSString class]]) return std::nullopt;
  return textOf(value);
}

std::optional<CocoaBundle> bundleAt(NSURL* place) {
  auto path = textOf(place.path);
  NSBundle* bundle = path ? [NSBundle bundleWithPath:foundationText(*path)] : nil;
  if (bundle == nil) return std::nullopt;
  return CocoaBundle{.path = std::move(*path),
                     .bundleId = textOf(bundle.bundleIdentifier),
                     .displayName = entry(bundle, @"CFBundleDisplayName"),
                     .bundleName = entry(bundle, @"CFBundleName")};
}

NSArray<NSURL*>* filesIn(NSURL* folder) {
  return
      [NSFileManager.defaultManager contentsOfDirectoryAtURL:folder
                                  includingPropertiesForKeys:nil
                                                     options:NSDirectoryEnumerationSkipsHiddenFiles
                                                       error:nil];
}

void addBundles(std::vector<CocoaBundle>& bundles, NSURL* folder, int levels) {
  for (NSURL* file in filesIn(folder)) {
    if ([file.pathExtension isEqualToString:@"app"]) {
      if (auto bundle = bundleAt(file)) bundles.push_back(std::move(*bundle));
    } else if (levels > 0) {
      addBundles(bundles, file, levels - 1);
    }
  }
}

class SystemWorkspace final : public CocoaWorkspace {
 public:
  std::optional<std::string> ownBundleId() override {
    return textOf(NSBundle.mainBundle.bundleIdentifier);
  }

  std::optional<std::string> ownBundlePath() override {
    // A plain program has a main bundle too: the folder it lies in.
    if (NSBundle.mainBundle.bundleIdentifier == nil) return std::nullopt;
    return textOf(NSBundle.mainBundle.bundlePath);
  }

  std::size_t frontmostBundleId(char* buffer, std::size_t capacity) override {
    NSString* identifier = NSWorkspace.sharedWorkspace.frontmostApplication.bundleIdentifier;
    if (identifier == nil) return 0;
    if (![identifier getCString:buffer maxLength:capacity encoding:NSUTF8StringEncoding]) return 0;
    return std::strlen(buffer);
  }

  std::optional<CocoaApplication> frontmost() override {
    return told(NSWorkspace.sharedWorkspace.frontmostApplication);
  }

  std::vector<CocoaApplication> running() override {
    std::vector<CocoaApplication> applications;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
      if (auto known = told(application)) applications.push_back(std::move(*known));
    }
    return applications;
  }

  std::optional<CocoaBundle> bundleWithId(const std::string& bundleId) override {
    NSString* identifier = foundationText(bundleId);
    if (identifier == nil) return std::nullopt;
    NSURL* place = [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:identifier];
    return place != nil ? bundleAt(place) : std::nullopt;
  }

  std::optional<CocoaBundle> bundleAtPath(const std::string& path) override {
    NSString* place = foundationText(path);
    return place != nil ? bundleAt([NSURL fileURLWithPath:place]) : std::nullopt;
  }

  std::vector<CocoaBundle> bundlesInApplicationFolders() override {
    std::vector<CocoaBundle> bundles;
    NSArray<NSURL*>* folders = [NSFileManager.defaultManager URLsForDirectory:NSApplicationDirectory
                                                                    inDomains:NSAllDomainsMask];
    for (NSURL* folder in folders) addBundles(bundles, folder, 1);
    return bundles;
  }

  Observation observe(WorkspaceNotice notice,
                      std::function<void(const std::optional<CocoaApplication>&)> tell) override {
    // The workspace's own center: the default one never hears of these.
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    id<NSObject> token = [center addObserverForName:nameOf(notice)
                                             object:nil
                                              queue:NSOperationQueue.mainQueue
                                         usingBlock:^(NSNotification* notification) {
                                           tell(applicationIn(notification));
                                         }];
    return Observation([center, token] { [center removeObserver:token]; });
  }

  bool openUrl(const std::string& url) override {
    NSString* text = foundationText(url);
    NSURL* address = text != nil ? [NSURL URLWithString:text] : nil;  // which takes no nil
    return address != nil && [NSWorkspace.sharedWorkspace openURL:address];
  }

  void reveal(const std::string& path) override {
    NSString* place = foundationText(path);
    if (place == nil) return;
    NSURL* file = [NSURL fileURLWithPath:place];
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ file ]];
  }
};

}  // namespace

std::unique_ptr<CocoaWorkspace> CocoaWorkspace::system() {
  return std::make_unique<SystemWorkspace>();
}

}  // namespace velotap
