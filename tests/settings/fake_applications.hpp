// Applications as a test says they are.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/applications.hpp"

namespace velotap::test {

class FakeApplications final : public Applications {
 public:
  [[nodiscard]] std::optional<ApplicationBundle> find(const std::string& bundleId) override {
    const auto found = byId.find(bundleId);
    return found != byId.end() ? std::optional(found->second) : std::nullopt;
  }
  [[nodiscard]] std::vector<ApplicationBundle> installed() override {
    std::vector<ApplicationBundle> all;
    for (const auto& [id, application] : byId) all.push_back(application);
    return all;
  }
  [[nodiscard]] std::vector<RunningInstance> running() override { return instances; }

  void install(const std::string& id, const std::string& name) {
    byId[id] = {.bundleId = id,
                .displayName = name,
                .bundleName = {},
                .location = "/Applications/" + name + ".app"};
  }

  std::map<std::string, ApplicationBundle> byId;
  std::vector<RunningInstance> instances;
};

}  // namespace velotap::test
