#include "settings/about_pane.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings_fixture.hpp"
#include "shell/mail_link.hpp"

namespace velotap {
namespace {

using test::english;
using Feedback = SupportContact::Feedback;

const BuildFacts kBuild = {.version = "1.4.2", .build = "318", .notice = "© 2026 Somebody"};

TEST(AboutPane, SaysWhatTheProgramIs) {
  const AboutView view = aboutView(kBuild, true, english());
  EXPECT_EQ(view.name, "Velotap");
  EXPECT_EQ(view.versionLine, "Version 1.4.2 (318)");
  EXPECT_EQ(view.notice, "© 2026 Somebody");
  EXPECT_EQ(view.checkForUpdates, "Check for Updates…");
  EXPECT_TRUE(view.canCheckForUpdates);
  EXPECT_EQ(view.links.size(), 3U);
  EXPECT_FALSE(aboutView(kBuild, false, english()).canCheckForUpdates);
  EXPECT_EQ(versionLine(kBuild, test::textsIn("bg")), "Версия 1.4.2 (318)");
}

TEST(AboutPane, LinksLeadToPagesOfOneSite) {
  const std::string site = aboutLinkUrl(AboutLink::website);
  EXPECT_EQ(site.substr(0, 8), "https://");
  EXPECT_EQ(aboutLinkUrl(AboutLink::privacyPolicy), site + "/privacy");
  EXPECT_EQ(aboutLinkUrl(AboutLink::terms), site + "/terms");
}

TEST(SupportContact, WritesALetterWithTheVersionAsItsSubject) {
  EXPECT_EQ(
      SupportContact::mailURL("Version 1.4.2 (318)"),
      "mailto:" + std::string(supportAddress()) + "?subject=Velotap%20Version%201.4.2%20%28318%29");
}

std::vector<Feedback> contact(bool opens, bool copies, std::string& copied) {
  std::vector<Feedback> told;
  SupportContact::contact(
      "Version 1",
      {.open = [=](const std::string&,
                   const std::function<void(bool)>& outcome) { outcome(opens); },
       .copy =
           [&copied, copies](const std::string& text) {
             copied = text;
             return copies;
           }},
      [&told](const std::vector<Feedback>& feedback) { told = feedback; });
  return told;
}

TEST(SupportContact, CopiesTheAddressWhereNoLetterOpens) {
  std::string copied;
  EXPECT_TRUE(contact(true, true, copied).empty());
  EXPECT_EQ(copied, "");
  EXPECT_EQ(contact(false, true, copied),
            (std::vector<Feedback>{Feedback::openFailed, Feedback::copied}));
  EXPECT_EQ(copied, supportAddress());
  EXPECT_EQ(contact(false, false, copied),
            (std::vector<Feedback>{Feedback::openFailed, Feedback::copyFailed}));
}

TEST(SupportContact, SaysWhatHappened) {
  EXPECT_EQ(english()(SupportContact::key(Feedback::copied)), "The support address was copied.");
  EXPECT_EQ(english()(SupportContact::key(Feedback::openFailed)), "No mail app could be opened.");
  EXPECT_EQ(english()(SupportContact::key(Feedback::copyFailed)),
            "The support address could not be copied.");
}

TEST(Acknowledgements, ShowTheNoticesOrNothing) {
  EXPECT_EQ(acknowledgementsView("Qt\n…", english()).text, "Qt\n…");
  EXPECT_EQ(acknowledgementsView("", english()).text, "");
  EXPECT_EQ(acknowledgementsView("\xFF\xFE", english()).text, "");
  EXPECT_EQ(acknowledgementsView("", english()).done, "Done");
}

}  // namespace
}  // namespace velotap
