#include "settings/window/window_object.hpp"

#include <utility>

#include "settings/window/values.hpp"

namespace velotap {

WindowObject::WindowObject(std::function<Texts()> texts, Commands commands, QObject* parent)
    : PaneObject(parent), texts_(std::move(texts)), commands_(std::move(commands)) {
  refresh();
}

void WindowObject::refresh() {
  const Texts texts = texts_();
  QList<QVariantMap> rows;
  for (const PreferencesTabRow& row : preferencesTabs()) {
    rows.append(fields({{"id", row.label}, {"label", texts(row.label)}, {"symbol", row.symbol}}));
  }
  tabs_.sync(rows);
  setState(fields({{"title", texts(preferencesTabLabel(tab_))}, {"tab", static_cast<int>(tab_)}}));
}

void WindowObject::choose(PreferencesTab tab) {
  if (std::exchange(tab_, tab) == tab) return;
  refresh();
  emit tabChanged();
}

void WindowObject::setTab(int tab) {
  if (tab < 0 || static_cast<std::size_t>(tab) >= preferencesTabs().size()) return;
  choose(static_cast<PreferencesTab>(tab));
}

void PanesObject::refresh() {
  for (QObject* pane : {window, general, gestures, tuning, apps, about, practice}) {
    if (auto* object = qobject_cast<PaneObject*>(pane)) object->refresh();
  }
}

}  // namespace velotap
