// What is wrong with where things stand in a window: texts and controls over one another, outside
// of the card or the control that holds them, or past the window's sides.
//
// Asks the items themselves, so it knows nothing of looks. Main thread, after a frame.
#pragma once

#include <QQuickItem>
#include <QStringList>

namespace velotap::test {

/// Complaints about everything visible under `root`; of a popup and what lies behind it, each is
/// judged by itself.
[[nodiscard]] QStringList layoutProblems(QQuickItem* root);

}  // namespace velotap::test
