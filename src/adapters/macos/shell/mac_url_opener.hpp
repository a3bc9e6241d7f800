// Addresses handed to whatever the shared workspace has for them. Main thread.
#pragma once

#include "adapters/macos/cocoa/cocoa_workspace.hpp"
#include "platform/url_opener.hpp"

namespace velotap {

class MacUrlOpener final : public UrlOpener {
 public:
  explicit MacUrlOpener(CocoaWorkspace& workspace) : workspace_(workspace) {}
  void open(const std::string& url, Outcome outcome) override {
    const bool taken = workspace_.openUrl(url);
    if (outcome) outcome(taken);
  }

 private:
  CocoaWorkspace& workspace_;
};

}  // namespace velotap
