#include "adapters/macos/cocoa/key_path_observer.hpp"

#include <utility>

@interface VelotapKeyPathObserver : NSObject
- (instancetype)initWithObject:(NSObject*)object
                         paths:(NSArray<NSString*>*)paths
                       changed:(std::function<void()>)changed;
- (void)stop;
@end

@implementation VelotapKeyPathObserver {
  NSObject* _object;
  NSArray<NSString*>* _paths;
  std::function<void()> _changed;
}

- (instancetype)initWithObject:(NSObject*)object
                         paths:(NSArray<NSString*>*)paths
                       changed:(std::function<void()>)changed {
  self = [super init];
  if (self != nil) {
    _object = object;
    _paths = paths;
    _changed = std::move(changed);
    for (NSString* path in paths) {
      [object addObserver:self forKeyPath:path options:0 context:nullptr];
    }
  }
  return self;
}

- (void)stop {
  for (NSString* path in _paths) [_object removeObserver:self forKeyPath:path context:nullptr];
  _paths = nil;
  _object = nil;
}

- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  static_cast<void>(path);
  static_cast<void>(object);
  static_cast<void>(change);
  static_cast<void>(context);
  _changed();
}

@end

namespace velotap {

Observation observeKeyPaths(NSObject* object, NSArray<NSString*>* paths,
                            std::function<void()> changed) {
  VelotapKeyPathObserver* observer =
      [[VelotapKeyPathObserver alloc] initWithObject:object paths:paths changed:std::move(changed)];
  return Observation([observer] { [observer stop]; });
}

}  // namespace velotap
