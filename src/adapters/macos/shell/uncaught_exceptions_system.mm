#import <Foundation/Foundation.h>

#include <atomic>
#include <utility>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/uncaught_exceptions.hpp"

namespace velotap {
namespace {

// Never destroyed: a thread may fail while the process already ends.
std::function<void(const UncaughtException&)>* handlerOfThisProcess = nullptr;
NSUncaughtExceptionHandler* previousHandler = nullptr;

void handleUncaught(NSException* exception) {
  static std::atomic_flag handling;
  if (!handling.test_and_set()) {
    UncaughtException told{
        textOf(exception.name).value_or(""), textOf(exception.reason).value_or(""), {}};
    for (NSString* symbol in exception.callStackSymbols) {
      told.stack.push_back(textOf(symbol).value_or(""));
    }
    (*handlerOfThisProcess)(told);
  }
  if (previousHandler != nullptr) previousHandler(exception);
}

}  // namespace

void installUncaughtExceptionHandler(std::function<void(const UncaughtException&)> handler) {
  delete std::exchange(handlerOfThisProcess,
                       new std::function<void(const UncaughtException&)>(std::move(handler)));
  NSUncaughtExceptionHandler* installed = NSGetUncaughtExceptionHandler();
  if (installed == &handleUncaught) return;
  previousHandler = installed;
  NSSetUncaughtExceptionHandler(&handleUncaught);
}

}  // namespace velotap
