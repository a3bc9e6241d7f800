// The part of the Sparkle framework that is used. Objective-C++ only.
//
// Declared here because the framework is optional: it is loaded from the bundle at run time, its
// classes are found by name, and the program builds and runs without it.
#pragma once

#import <Foundation/Foundation.h>

@protocol VelotapSparkleUpdater <NSObject>
@property BOOL automaticallyChecksForUpdates;
@property(readonly, copy) NSDate* lastUpdateCheckDate;
@end

@protocol VelotapSparkleController <NSObject>
@property(readonly) NSObject<VelotapSparkleUpdater>* updater;
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
- (void)checkForUpdates:(id)sender;
@end
