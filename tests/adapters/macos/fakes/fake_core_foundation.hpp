// Core Foundation in a test: real objects with counted references, and a recorder of what is done
// with run loops, stored preferences and notifications.
//
// A use of an object that is gone or never was, a release too many and, when the fake is destroyed,
// an object that is still referenced by the code under test fail the test. One fake at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/macos/core_foundation/core_foundation_api.hpp"

namespace velotap::test {

enum class FakeKind {
  string,
  boolean,
  number,
  data,
  array,
  dictionary,
  date,  // stands for every type that the adapters do not know
  machPort,
  source,
  loop,
  center,
  event,
  inputSource,
  matching,
};

struct FakeObject;
using FakeEntries = std::vector<std::pair<const FakeObject*, const FakeObject*>>;

struct FakeObject {
  FakeKind kind = FakeKind::date;
  int references = 1;
  bool constant = false;
  std::string text;  // string: UTF-8; data: bytes
  std::variant<std::int64_t, double> number;
  bool unsignedBeyond = false;  // a whole number that 64 bits with a sign cannot hold
  std::vector<const FakeObject*> elements;
  FakeEntries entries;
  std::shared_ptr<void> extra;  // what other fakes keep with it
};

class FakeCoreFoundation {
 public:
  FakeCoreFoundation();
  ~FakeCoreFoundation();
  FakeCoreFoundation(const FakeCoreFoundation&) = delete;
  FakeCoreFoundation& operator=(const FakeCoreFoundation&) = delete;

  [[nodiscard]] static FakeCoreFoundation& current();
  [[nodiscard]] const CoreFoundationApi& api() const { return api_; }

  /// Functions of these names fail from now on.
  void fail(const std::string& function) { failing_.insert(function); }
  void succeed(const std::string& function) { failing_.erase(function); }
  [[nodiscard]] bool fails(const std::string& function) const {
    return failing_.contains(function);
  }

  /// Makes an object with one reference, which belongs to whoever it is given to.
  FakeObject& make(FakeKind kind, std::string text = {});
  FakeObject& makeNumber(std::variant<std::int64_t, double> number);
  FakeObject& makeDictionary(FakeEntries entries);  // takes the references over
  FakeObject& makeArray(std::vector<const FakeObject*> elements);
  /// A constant of the framework; any number of references may come and go, in pairs.
  FakeObject& makeConstant(FakeKind kind, std::string text);
  /// The object behind a reference that is alive and of that kind; fails the test otherwise.
  FakeObject& live(const void* reference, FakeKind kind);
  FakeObject& live(const void* reference);
  void retain(const FakeObject& object);
  void release(const FakeObject& object);

  /// What was called, in order, by those functions that are worth watching.
  std::vector<std::string> calls;

  /// The sources of the main loop in its common modes.
  std::vector<const void*> loopSources;

  /// The preferences service, by domain and key. Takes over the value's reference.
  void preferSet(const std::string& domain, const std::string& key, const FakeObject& value);
  void preferRemove(const std::string& domain, const std::string& key);
  [[nodiscard]] const FakeObject* preferred(const std::string& domain,
                                            const std::string& key) const;
  [[nodiscard]] std::size_t preferredCount(const std::string& domain) const;

  /// Tells the distributed center's observers of that name.
  void notify(std::string_view name);
  [[nodiscard]] std::size_t observers() const { return observers_.size(); }

 private:
  struct Observer {
    const void* observer;
    CFNotificationCallback callback;
    std::string name;
  };
  using Domain = std::map<std::string, const FakeObject*>;

  void fillApi();
  void fillCollections();
  void fillScalars();
  void fillLoops();
  void fillPreferences();
  void fillCenters();
  void destroy(FakeObject& object);

  CoreFoundationApi api_{};
  std::set<std::string> failing_;
  std::map<const void*, std::unique_ptr<FakeObject>> objects_;
  std::map<std::string, Domain> preferences_;
  std::vector<Observer> observers_;
  FakeObject& loop_;
  FakeObject& center_;
  // What the table's variables are: references to constants.
  CFBooleanRef true_, false_;
  CFStringRef commonModes_, defaultMode_, currentUser_, anyHost_;
};

}  // namespace velotap::test
