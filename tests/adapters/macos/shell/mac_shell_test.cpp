#include <gtest/gtest.h>

#include "adapters/macos/shell/mac_announcements.hpp"
#include "adapters/macos/shell/mac_trust_prompt.hpp"
#include "adapters/macos/shell/mac_url_opener.hpp"
#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_runtime.hpp"

namespace velotap::test {
namespace {

TEST(MacTrustPromptTest, itPromptsOpensThePageAndShowsTheBundle) {
  FakeCoreFoundation cf;
  FakeAccessibility accessibility(cf);
  MacTrust trust(cf.api(), accessibility.api());
  FakeWorkspace workspace;
  MacTrustPrompt prompt(trust, workspace);
  prompt.request();
  EXPECT_EQ(accessibility.prompts, 1);
  EXPECT_TRUE(prompt.openSettings());
  EXPECT_EQ(workspace.opened.back(),
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
  workspace.opens = false;
  EXPECT_FALSE(prompt.openSettings());
  EXPECT_TRUE(prompt.revealProgram());
  EXPECT_EQ(workspace.revealed, (std::vector<std::string>{"/Applications/Velotap.app"}));
  workspace.path.reset();
  EXPECT_FALSE(prompt.revealProgram());
  EXPECT_EQ(workspace.revealed.size(), 1U);
  EXPECT_FALSE(prompt.observe([] {}).active()) << "who wants to know has to ask again";
}

TEST(MacUrlOpenerTest, theAnswerIsTheWorkspaces) {
  FakeWorkspace workspace;
  MacUrlOpener urls(workspace);
  const auto outcome = [&urls](const std::string& url) {
    std::optional<bool> told;
    urls.open(url, [&told](bool taken) { told = taken; });
    return told.value();
  };
  EXPECT_TRUE(outcome("mailto:somebody@example.org"));
  workspace.opens = false;
  EXPECT_FALSE(outcome("mailto:somebody@example.org"));
  EXPECT_EQ(workspace.opened.size(), 2U);
}

class FakeAnnouncer final : public CocoaAnnouncer {
 public:
  void announce(const std::string& message, int priority) override {
    said.push_back(message + " " + std::to_string(priority));
  }
  std::vector<std::string> said;
};

TEST(MacAnnouncementsTest, thePriorityIsTheSystemsNumberAndEmptinessIsNotSpoken) {
  FakeAnnouncer announcer;
  MacAnnouncements announcements(announcer);
  announcements.post("low", AnnouncementPriority::low);
  announcements.post("medium", AnnouncementPriority::medium);
  announcements.post("high", AnnouncementPriority::high);
  announcements.post("", AnnouncementPriority::high);
  EXPECT_EQ(announcer.said, (std::vector<std::string>{"low 10", "medium 50", "high 90"}));
}

}  // namespace
}  // namespace velotap::test
