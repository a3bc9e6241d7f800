// A view of ours on the screen: drawn by the processor, with our pictures.
//
// With the last of them goes what Qt would keep for all: the types that QML knows and the
// typefaces, a few megabytes that the next view makes anew. So there must be no QML engine beside
// those of these views. Main thread; the context outlives them.
#pragma once

#include <QQuickView>
#include <QString>
#include <QUrl>
#include <memory>

#include "settings/views/bridge/view_context.hpp"

namespace velotap {

/// Ready to show one of our roots.
[[nodiscard]] std::unique_ptr<QQuickView> makeView(ViewContext& context);
[[nodiscard]] QUrl viewUrl(const QString& component);

}  // namespace velotap
