// The login item over the service management framework. Main thread.
//
// The framework calls it an error to register what is registered, or to unregister what is not; to
// the person the outcome is what they wanted, so neither is an error here.
#pragma once

#include <memory>

#include "platform/login_item.hpp"

namespace velotap {

/// The main application's service, which only Objective-C can reach, with the system's own numbers.
class CocoaLoginService {
 public:
  struct Error {
    long code = 0;
    std::string description;
  };
  virtual ~CocoaLoginService() = default;
  [[nodiscard]] virtual long status() = 0;
  [[nodiscard]] virtual std::optional<Error> registerService() = 0;
  [[nodiscard]] virtual std::optional<Error> unregisterService() = 0;
  virtual void openLoginItemsSettings() = 0;

  /// The service of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaLoginService> system();
};

class MacLoginItem final : public LoginItemService {
 public:
  explicit MacLoginItem(CocoaLoginService& service) : service_(service) {}

  [[nodiscard]] LoginItemStatus status() override;
  [[nodiscard]] std::optional<std::string> registerProgram() override;
  [[nodiscard]] std::optional<std::string> unregisterProgram() override;
  void openSettings() override { service_.openLoginItemsSettings(); }

 private:
  CocoaLoginService& service_;
};

}  // namespace velotap
