#include "settings/about_pane.hpp"

#include "base/utf8.hpp"
#include "shell/mail_link.hpp"

namespace velotap {

std::string aboutLinkUrl(AboutLink link) {
  std::string site = VELOTAP_WEBSITE;
  switch (link) {
    case AboutLink::website:
      break;
    case AboutLink::privacyPolicy:
      return site + "/privacy";
    case AboutLink::terms:
      return site + "/terms";
  }
  return site;
}

std::string versionLine(const BuildFacts& build, const Texts& texts) {
  return texts("Version %@ (%@)", {build.version, build.build});
}

AboutView aboutView(const BuildFacts& build, bool canCheckForUpdates, const Texts& texts) {
  return {.name = "Velotap",
          .tagline = texts("about.tagline"),
          .versionLine = versionLine(build, texts),
          .notice = build.notice,
          .checkForUpdates = texts("Check for Updates…"),
          .canCheckForUpdates = canCheckForUpdates,
          .contactSupport = texts("Contact Support…"),
          .supportSnapshot = texts("design.support.snapshot"),
          .copyAddress = texts("support.email.copy"),
          .links = {{AboutLink::website, texts("about.website")},
                    {AboutLink::privacyPolicy, texts("Privacy Policy")},
                    {AboutLink::terms, texts("about.terms")}},
          .acknowledgements = texts("Acknowledgements")};
}

std::string_view SupportContact::key(Feedback feedback) noexcept {
  switch (feedback) {
    case Feedback::copied:
      break;
    case Feedback::openFailed:
      return "support.email.openFailed";
    case Feedback::copyFailed:
      return "support.email.copyFailed";
  }
  return "support.email.copied";
}

std::string SupportContact::mailURL(std::string_view versionLine) {
  return mailLink(supportAddress(), "Velotap " + std::string(versionLine), {});
}

void SupportContact::contact(std::string_view versionLine, const Effects& effects,
                             std::function<void(const std::vector<Feedback>&)> tell) {
  effects.open(mailURL(versionLine), [effects, tell = std::move(tell)](bool taken) {
    if (taken) return tell({});
    tell({Feedback::openFailed, copyAddress(effects)});
  });
}

SupportContact::Feedback SupportContact::copyAddress(const Effects& effects) {
  return effects.copy(std::string(supportAddress())) ? Feedback::copied : Feedback::copyFailed;
}

AcknowledgementsView acknowledgementsView(std::string_view notices, const Texts& texts) {
  return {.title = texts("Acknowledgements"),
          .hint = texts("design.find.notices"),
          .search = texts("about.notices.search"),
          .text = isUtf8(notices) ? std::string(notices) : std::string(),
          .done = texts("Done")};
}

}  // namespace velotap
