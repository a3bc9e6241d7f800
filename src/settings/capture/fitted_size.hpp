// How much room what is drawn takes, whatever size it was given.
//
// Main thread.
#pragma once

#include <QQuickItem>
#include <QSize>

namespace velotap {

/// How far to the right and down the visible items under `root` reach in their window, in whole
/// points. What scrolls may be any height, but not wider than its place.
[[nodiscard]] QSize fittedSize(const QQuickItem& root);

}  // namespace velotap
