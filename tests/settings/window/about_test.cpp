// The About pane as a person works it: what each step reports, and what it leaves alone.

#include <functional>
#include <string>
#include <vector>

#include "scene.hpp"
#include "settings/window/values.hpp"
#include "shell/mail_link.hpp"

namespace velotap::test {
namespace {

class AboutTest : public testing::Test {
 protected:
  AboutTest() {
    facts.build = {.version = "1.4.2", .build = "318", .notice = "©"};
    facts.systemVersion = "12";
  }
  [[nodiscard]] QString state(const char* field) const {
    return pane.state()[QLatin1String(field)].toString();
  }
  [[nodiscard]] QString snapshot(const char* field) const {
    return pane.state()[QStringLiteral("snapshot")].toMap()[QLatin1String(field)].toString();
  }
  [[nodiscard]] QString words(std::string_view key) const { return qt(fixture.texts()(key)); }

  Fixture fixture{"en"};
  SupportFacts facts;
  bool opens = true;
  bool copies = true;
  bool saves = true;
  std::vector<std::string> opened;
  std::vector<std::string> copied;
  std::vector<std::pair<std::string, std::string>> saved;
  int checks = 0;
  AboutObject pane{{.texts = [this] { return fixture.texts(); },
                    .facts = [this] { return facts; },
                    .canCheckForUpdates = [] { return true; },
                    .checkForUpdates = [this] { ++checks; },
                    .contact = {.open =
                                    [this](const std::string& url, const auto& tell) {
                                      opened.push_back(url);
                                      if (tell) tell(opens);
                                    },
                                .copy =
                                    [this](const std::string& text) {
                                      if (copies) copied.push_back(text);
                                      return copies;
                                    }},
                    .save =
                        [this](std::string_view name, const std::string& text) {
                          saved.emplace_back(name, text);
                          return saves;
                        },
                    .notices = [] { return std::string("Notices"); }}};
};

TEST_F(AboutTest, ALetterThatOpensNeedsNoWord) {
  pane.contactSupport();
  EXPECT_EQ(opened, (std::vector<std::string>{"mailto:" + std::string(supportAddress()) +
                                              "?subject=Velotap%20Version%201.4.2%20%28318%29"}));
  EXPECT_EQ(state("feedback"), QString());
  EXPECT_TRUE(copied.empty());
}

TEST_F(AboutTest, WithoutAMailProgramTheAddressIsCopied) {
  opens = false;
  pane.contactSupport();
  EXPECT_EQ(copied, (std::vector<std::string>{std::string(supportAddress())}));
  EXPECT_EQ(state("feedback"),
            words("support.email.openFailed") + u' ' + words("support.email.copied"));
  copies = false;
  pane.contactSupport();
  EXPECT_EQ(state("feedback"),
            words("support.email.openFailed") + u' ' + words("support.email.copyFailed"));
  opens = true;
  pane.contactSupport();
  EXPECT_EQ(state("feedback"), QString()) << "what went wrong before is over";
}

TEST_F(AboutTest, TheAddressIsCopiedOnRequest) {
  pane.copyAddress();
  EXPECT_EQ(state("feedback"), words("support.email.copied"));
  EXPECT_TRUE(opened.empty());
  copies = false;
  pane.copyAddress();
  EXPECT_EQ(state("feedback"), words("support.email.copyFailed"));
}

TEST_F(AboutTest, TheSnapshotIsCopiedAsItIsShown) {
  pane.openSnapshot();
  pane.copySnapshot();
  ASSERT_EQ(copied.size(), 1U);
  EXPECT_EQ(qt(copied[0]), snapshot("text"));
  EXPECT_EQ(snapshot("feedback"), words("design.copied"));
  copies = false;
  pane.copySnapshot();
  EXPECT_EQ(snapshot("feedback"), words("support.snapshot.copyFailed"));
  pane.openSnapshot();
  EXPECT_EQ(snapshot("feedback"), QString()) << "opened anew it has nothing to report";
}

TEST_F(AboutTest, TheSnapshotIsSavedUnderItsName) {
  pane.saveSnapshot();
  ASSERT_EQ(saved.size(), 1U);
  EXPECT_EQ(saved[0].first, "Velotap-support.txt");
  EXPECT_EQ(qt(saved[0].second), snapshot("text"));
  EXPECT_EQ(snapshot("feedback"), QString());
  saves = false;
  pane.saveSnapshot();
  EXPECT_EQ(snapshot("feedback"), words("refine.support.save.error"));
  EXPECT_EQ(state("feedback"), QString()) << "that is of the sheet alone";
}

TEST_F(AboutTest, WhatItReportsFollowsTheLanguage) {
  opens = false;
  pane.contactSupport();
  saves = false;
  pane.saveSnapshot();
  fixture.setLocale("de");
  pane.refresh();
  EXPECT_EQ(state("feedback"),
            words("support.email.openFailed") + u' ' + words("support.email.copied"));
  EXPECT_EQ(snapshot("feedback"), words("refine.support.save.error"));
}

TEST_F(AboutTest, PagesAndUpdatesAreAskedFor) {
  for (const char* page : {"website", "privacy", "terms", "nonsense"}) {
    pane.openPage(QLatin1String(page));
  }
  EXPECT_EQ(opened, (std::vector<std::string>{aboutLinkUrl(AboutLink::website),
                                              aboutLinkUrl(AboutLink::privacyPolicy),
                                              aboutLinkUrl(AboutLink::terms)}));
  pane.checkForUpdates();
  EXPECT_EQ(checks, 1);
}

TEST_F(AboutTest, NoticesAreReadWhenTheyAreShown) {
  const auto text = [this] {
    return pane.state()[QStringLiteral("notices")].toMap()[QStringLiteral("text")].toString();
  };
  EXPECT_EQ(text(), QString());
  pane.openNotices();
  EXPECT_EQ(text(), QStringLiteral("Notices"));
}

QQuickItem* textArea(QQuickItem* root) {
  if (root->inherits("QQuickTextArea") && root->isVisible()) return root;
  for (QQuickItem* child : root->childItems()) {
    if (QQuickItem* found = textArea(child)) return found;
  }
  return nullptr;
}

TEST_F(SceneTest, LongerTextsAreDrawnAsAWhole) {
  for (const char* sheet : {"design.support.snapshot", "Acknowledgements"}) {
    open("en", PreferencesTab::about, {560, 600});
    pressText(sheet);
    awaitFrame();
    const QQuickItem* area = textArea(settings->view()->contentItem());
    ASSERT_NE(area, nullptr) << sheet;
    EXPECT_GT(area->property("contentHeight").toDouble(), 20) << sheet;
    EXPECT_GE(area->height(), area->property("contentHeight").toDouble()) << sheet;
  }
}

// While a sheet is open the shortcut for Find is the sheet's own.
TEST_F(SceneTest, FindLeadsToTheFieldOfTheSheet) {
  open("en", PreferencesTab::about, {560, 600});
  pressText("Acknowledgements");
  const auto inField = [this] {
    return settings->view()->activeFocusItem()->inherits("QQuickTextField");
  };
  EXPECT_TRUE(inField()) << "it begins there";
  control(qt(fixture->texts()("Done")))->forceActiveFocus();
  ASSERT_FALSE(inField());
  key(Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(inField());
}

}  // namespace
}  // namespace velotap::test
