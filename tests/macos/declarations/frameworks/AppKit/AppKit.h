// AppKit, as far as the macOS adapters use it.
#pragma once

#include <Foundation/Foundation.h>

typedef CGRect NSRect;
typedef CGPoint NSPoint;
typedef CGSize NSSize;

@class NSEvent, NSImage, NSMenu, NSStatusItem, UTType;

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
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
@property(readonly) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)urls;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier;
- (NSImage*)iconForFile:(NSString*)path;
@end

typedef NSInteger NSModalResponse;
typedef NSInteger NSControlStateValue;
typedef NSUInteger NSEventModifierFlags;
typedef unsigned long long NSEventMask;

typedef enum NSEventType : NSUInteger {
  NSEventTypeLeftMouseUp = 2,
  NSEventTypeRightMouseUp = 4
} NSEventType;

enum : NSEventModifierFlags {
  NSEventModifierFlagShift = 1 << 17,
  NSEventModifierFlagControl = 1 << 18,
  NSEventModifierFlagCommand = 1 << 20
};
enum : NSEventMask { NSEventMaskLeftMouseUp = 1 << 2, NSEventMaskRightMouseUp = 1 << 4 };

static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

@interface NSEvent : NSObject
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@end

@interface NSImage : NSObject
- (void)drawInRect:(NSRect)rect;
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description;
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSView : NSObject
@property NSRect bounds;
@property(copy) NSString* toolTip;
@property(copy) NSString* accessibilityLabel;
@end

@interface NSControl : NSView
@property(weak) id target;
@property SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end

@interface NSButton : NSControl
@property(strong) NSImage* image;
- (void)highlight:(BOOL)flag;
@end

@interface NSStatusBarButton : NSButton
@property BOOL appearsDisabled;
@end

@interface NSMenuItem : NSObject
@property(copy) NSString* title;
@property(strong) NSMenu* submenu;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(weak) id target;
@property(strong) id representedObject;
@property(getter=isEnabled) BOOL enabled;
@property(getter=isHidden) BOOL hidden;
@property NSControlStateValue state;
@property(copy) NSString* toolTip;
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(SEL)action
                keyEquivalent:(NSString*)key;
@end

@protocol NSMenuItemValidation <NSObject>
- (BOOL)validateMenuItem:(NSMenuItem*)item;
@end

@interface NSMenu : NSObject
@property(readonly) NSInteger numberOfItems;
@property BOOL autoenablesItems;
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
- (NSMenuItem*)itemAtIndex:(NSInteger)index;
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item atLocation:(NSPoint)point inView:(NSView*)view;
@end

static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusItem : NSObject
@property(readonly) NSStatusBarButton* button;
@property(getter=isVisible) BOOL visible;
@end

@interface NSStatusBar : NSObject
@property(class, readonly) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

static const NSModalResponse NSModalResponseOK = 1;

@interface NSSavePanel : NSObject
@property(copy) NSURL* directoryURL;
@property(readonly, copy) NSURL* URL;
@property(copy) NSString* message;
@property(copy) NSString* nameFieldStringValue;
@property(copy) NSArray<UTType*>* allowedContentTypes;
@property BOOL canCreateDirectories;
+ (NSSavePanel*)savePanel;
- (NSModalResponse)runModal;
@end

@interface NSOpenPanel : NSSavePanel
@property(readonly, copy) NSArray<NSURL*>* URLs;
@property BOOL allowsMultipleSelection;
+ (NSOpenPanel*)openPanel;
@end

typedef NSString* NSPasteboardType;

@interface NSPasteboard : NSObject
@property(class, readonly) NSPasteboard* generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString*)text forType:(NSPasteboardType)type;
@end

typedef NSString* NSColorSpaceName;
typedef NSString* NSBitmapImageRepPropertyKey;
typedef enum NSBitmapImageFileType : NSUInteger {
  NSBitmapImageFileTypePNG = 4
} NSBitmapImageFileType;

@interface NSBitmapImageRep : NSObject
- (instancetype)initWithBitmapDataPlanes:(unsigned char**)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bits
                         samplesPerPixel:(NSInteger)samples
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)planar
                          colorSpaceName:(NSColorSpaceName)space
                             bytesPerRow:(NSInteger)rowBytes
                            bitsPerPixel:(NSInteger)pixelBits;
- (NSData*)representationUsingType:(NSBitmapImageFileType)type
                        properties:(NSDictionary<NSBitmapImageRepPropertyKey, id>*)properties;
@end

@interface NSGraphicsContext : NSObject
@property(class, strong) NSGraphicsContext* currentContext;
+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

typedef NSString* NSAppearanceName;

@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names;
@end

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end

@class NSApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationDidBecomeActive:(NSNotification*)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
- (void)applicationWillTerminate:(NSNotification*)notification;
@end

@interface NSApplication : NSObject
@property(class, readonly) NSApplication* sharedApplication;
@property(readonly) NSEvent* currentEvent;
@property(strong) NSMenu* mainMenu;
@property(strong) NSMenu* windowsMenu;
@property(weak) id<NSApplicationDelegate> delegate;
@property(readonly, strong) NSAppearance* effectiveAppearance;
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender;
- (void)activateIgnoringOtherApps:(BOOL)ignore;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)run;
- (void)terminate:(id)sender;
@end

extern "C" {
extern NSPasteboardType const NSPasteboardTypeString;
extern NSColorSpaceName const NSDeviceRGBColorSpace;
typedef NSString* NSAccessibilityNotificationName;
typedef NSString* NSAccessibilityNotificationUserInfoKey;
extern NSAccessibilityNotificationName const NSAccessibilityAnnouncementRequestedNotification;
extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey;
extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityPriorityKey;
void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id>* userInfo);
extern NSAppearanceName const NSAppearanceNameAqua;
extern NSAppearanceName const NSAppearanceNameDarkAqua;
extern NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;
extern NSNotificationName const NSWorkspaceWillSleepNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern NSString* const NSWorkspaceApplicationKey;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;
}
