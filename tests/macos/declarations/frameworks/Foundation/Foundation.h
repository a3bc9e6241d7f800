// Foundation, as far as the macOS adapters use it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;

@class NSArray<ObjectType>, NSData, NSDate, NSDictionary<KeyType, ObjectType>, NSError, NSNotification,
    NSNumber, NSString, NSURL;

@protocol NSObject
@end

__attribute__((objc_root_class))
@interface NSObject <NSObject>
+ (Class)class;
+ (instancetype)alloc;
+ (instancetype)new;
- (instancetype)init;
- (BOOL)isKindOfClass:(Class)type;
- (BOOL)respondsToSelector:(SEL)selector;
@end

@protocol NSCopying
@end

@interface NSValue : NSObject
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithInteger:(NSInteger)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
@end

typedef enum NSStringEncoding : NSUInteger { NSUTF8StringEncoding = 4 } NSStringEncoding;

@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const char* UTF8String;
+ (instancetype)stringWithUTF8String:(const char*)text;
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding;
- (BOOL)getCString:(char*)buffer
         maxLength:(NSUInteger)size
          encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)other;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@end

@interface NSError : NSObject
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSArray<__covariant ObjectType> : NSObject
@property(readonly) NSUInteger count;
+ (instancetype)arrayWithObject:(ObjectType)object;
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)count;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)index;
- (NSUInteger)countByEnumeratingWithState:(struct NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length;
@end

struct NSFastEnumerationState {
  unsigned long state;
  id __unsafe_unretained* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
};

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects
                              forKeys:(const KeyType[])keys
                                count:(NSUInteger)count;
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSData : NSObject
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)whole;
@end

@interface NSDate : NSObject
@property(readonly) NSTimeInterval timeIntervalSince1970;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@end

@interface NSLocale : NSObject
@property(class, readonly, copy) NSLocale* currentLocale;
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
@property(readonly, copy) NSString* localeIdentifier;
@end

@interface NSTimeZone : NSObject
@property(class, readonly, copy) NSTimeZone* systemTimeZone;
@property(readonly, copy) NSString* name;
+ (void)resetSystemTimeZone;
- (NSInteger)secondsFromGMTForDate:(NSDate*)date;
@end

@interface NSURL : NSObject
@property(readonly, copy) NSString* path;
@property(readonly, copy) NSString* pathExtension;
+ (instancetype)URLWithString:(NSString*)text;
+ (instancetype)fileURLWithPath:(NSString*)path;
+ (instancetype)fileURLWithPath:(NSString*)path isDirectory:(BOOL)directory;
@end

typedef enum NSSearchPathDirectory : NSUInteger {
  NSApplicationDirectory = 1,
  NSApplicationSupportDirectory = 14
} NSSearchPathDirectory;
typedef NSUInteger NSSearchPathDomainMask;
enum : NSSearchPathDomainMask { NSUserDomainMask = 1, NSAllDomainsMask = 0x0ffff };
typedef NSUInteger NSDirectoryEnumerationOptions;
enum : NSDirectoryEnumerationOptions { NSDirectoryEnumerationSkipsHiddenFiles = 1 << 2 };
typedef NSString* NSURLResourceKey;

@interface NSFileManager : NSObject
@property(class, readonly) NSFileManager* defaultManager;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domains;
- (NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)folder
                  includingPropertiesForKeys:(NSArray<NSURLResourceKey>*)keys
                                     options:(NSDirectoryEnumerationOptions)options
                                       error:(NSError**)error;
@end

@interface NSBundle : NSObject
@property(class, readonly) NSBundle* mainBundle;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* bundlePath;
@property(readonly, copy) NSString* privateFrameworksPath;
+ (instancetype)bundleWithPath:(NSString*)path;
- (BOOL)load;
- (id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSProcessInfo : NSObject
@property(class, readonly) NSProcessInfo* processInfo;
@property(readonly, copy) NSString* operatingSystemVersionString;
@end

typedef NSString* NSNotificationName;

@interface NSNotification : NSObject
@property(readonly, copy) NSNotificationName name;
@property(readonly, copy) NSDictionary* userInfo;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly) NSOperationQueue* mainQueue;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

typedef NSUInteger NSKeyValueObservingOptions;
typedef NSString* NSKeyValueChangeKey;

@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context;
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)path
            options:(NSKeyValueObservingOptions)options
            context:(void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path context:(void*)context;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly) NSUserDefaults* standardUserDefaults;
- (instancetype)initWithSuiteName:(NSString*)name;
@end

@interface NSException : NSObject
@property(readonly, copy) NSString* name;
@property(readonly, copy) NSString* reason;
@property(readonly, copy) NSArray<NSString*>* callStackSymbols;
@end

extern "C" {
Class NSClassFromString(NSString* name);
extern NSNotificationName const NSCurrentLocaleDidChangeNotification;
extern NSNotificationName const NSSystemTimeZoneDidChangeNotification;
typedef void NSUncaughtExceptionHandler(NSException* exception);
NSUncaughtExceptionHandler* NSGetUncaughtExceptionHandler(void);
void NSSetUncaughtExceptionHandler(NSUncaughtExceptionHandler* handler);
}
