#include "settings/window/about_object.hpp"

#include <QPointer>
#include <array>
#include <utility>

#include "settings/window/values.hpp"

namespace velotap {
namespace {

struct Page {
  AboutLink link;
  const char* name;
  const char* symbol;
};
constexpr std::array<Page, 3> kPages{{{AboutLink::website, "website", "globe"},
                                      {AboutLink::privacyPolicy, "privacy", "lock"},
                                      {AboutLink::terms, "terms", "doc.text"}}};

const Page& pageOf(AboutLink link) {
  for (const Page& page : kPages) {
    if (page.link == link) return page;
  }
  return kPages.front();
}

QVariantMap linksState(const AboutView& view) {
  QVariantList pages;
  for (const auto& [link, label] : view.links) {
    const Page& page = pageOf(link);
    pages.append(fields({{"value", page.name}, {"symbol", page.symbol}, {"label", label}}));
  }
  return fields({{"pages", pages}, {"acknowledgements", view.acknowledgements}});
}

}  // namespace

AboutObject::AboutObject(AboutEffects effects, QObject* parent)
    : PaneObject(parent), effects_(std::move(effects)) {
  refresh();
}

void AboutObject::refresh() {
  const Texts texts = effects_.texts();
  const SupportFacts facts = effects_.facts();
  const AboutView view = aboutView(facts.build, effects_.canCheckForUpdates(), texts);
  const SupportSnapshotView snapshot = supportSnapshotView(facts, texts);
  const AcknowledgementsView notices = acknowledgementsView(notices_, texts);
  std::string feedback;
  for (const SupportContact::Feedback each : feedback_) {
    feedback += (feedback.empty() ? "" : " ") + texts(SupportContact::key(each));
  }
  setState(fields(
      {{"name", view.name},
       {"tagline", view.tagline},
       {"version", view.versionLine},
       {"notice", view.notice},
       {"updates", view.checkForUpdates},
       {"canCheck", view.canCheckForUpdates},
       {"contact", view.contactSupport},
       {"copyAddress", view.copyAddress},
       {"snapshotTitle", view.supportSnapshot},
       {"feedback", feedback},
       {"links", linksState(view)},
       {"snapshot",
        fields({{"title", snapshot.title},
                {"privacy", snapshot.caption},
                {"text", snapshot.text},
                {"copy", snapshot.copyTitle},
                {"save", snapshot.saveTitle},
                {"feedback", snapshotFeedback_.empty() ? std::string() : texts(snapshotFeedback_)},
                {"done", snapshot.done}})},
       {"notices", fields({{"title", notices.title},
                           {"find", notices.hint},
                           {"search", notices.search},
                           {"clear", texts("Clear search")},
                           {"text", notices.text},
                           {"done", notices.done}})}}));
}

void AboutObject::checkForUpdates() {
  effects_.checkForUpdates();
}

void AboutObject::contactSupport() {
  showFeedback({});
  // The window may be gone when it is known whether a program took the letter.
  SupportContact::contact(versionLine(effects_.facts().build, effects_.texts()), effects_.contact,
                          [alive = QPointer<AboutObject>(this)](const auto& feedback) {
                            if (alive) alive->showFeedback(feedback);
                          });
}

void AboutObject::showFeedback(const std::vector<SupportContact::Feedback>& feedback) {
  feedback_ = feedback;
  refresh();
}

void AboutObject::copyAddress() {
  feedback_ = {SupportContact::copyAddress(effects_.contact)};
  refresh();
}

void AboutObject::openPage(const QString& name) {
  for (const Page& page : kPages) {
    if (name == QLatin1String(page.name)) effects_.contact.open(aboutLinkUrl(page.link), {});
  }
}

void AboutObject::openSnapshot() {
  snapshotFeedback_ = {};
  refresh();
}

void AboutObject::copySnapshot() {
  const Texts texts = effects_.texts();
  const bool copied = effects_.contact.copy(SupportSnapshot::text(effects_.facts(), texts));
  snapshotFeedback_ = SupportSnapshot::key(copied ? SupportSnapshot::CopyFeedback::copied
                                                  : SupportSnapshot::CopyFeedback::failed);
  refresh();
}

void AboutObject::saveSnapshot() {
  const std::string text = SupportSnapshot::text(effects_.facts(), effects_.texts());
  const bool fine = effects_.save(SupportSnapshot::kFileName, text);
  snapshotFeedback_ = fine ? std::string_view() : SupportSnapshot::kSaveErrorKey;
  refresh();
}

void AboutObject::openNotices() {
  notices_ = effects_.notices();
  refresh();
}

}  // namespace velotap
