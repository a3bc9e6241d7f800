// AppKit, as far as the macOS adapters use it.
#pragma once

#include <Foundation/Foundation.h>

typedef CGRect NSRect;
typedef CGPoint NSPoint;
typedef CGSize NSSize;

@class NSImage, NSWindow;

typedef enum NSApplicationActivationPolicy : NSInteger {
  NSApplicationActivationPolicyRegular = 0,
  NSApplicationActivationPolicyAccessory = 1,
  NSApplicationActivationPolicyProhibited = 2
} NSApplicationActivationPolicy;

@interface NSRunningApplication : NSObject
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, copy) NSString* localizedName;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSURL* bundleURL;
@end

@interface NSWorkspace : NSObject
@property(class, readonly) NSWorkspace* sharedWorkspace;
@property(readonly) NSNotificationCenter* notificationCenter;
@property(readonly) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)urls;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier;
- (NSImage*)iconForFile:(NSString*)path;
@end

typedef NSInteger NSModalResponse;

@interface NSButton : NSObject
@end

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end

@interface NSApplication : NSObject
@property(class, readonly) NSApplication* sharedApplication;
@property(readonly) NSWindow* keyWindow;
- (void)activateIgnoringOtherApps:(BOOL)ignore;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)run;
- (void)terminate:(id)sender;
@end

extern "C" {
extern NSApplication* NSApp;
extern NSNotificationName const NSWorkspaceWillSleepNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern NSString* const NSWorkspaceApplicationKey;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;
}
