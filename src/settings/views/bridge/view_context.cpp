#include "settings/views/bridge/view_context.hpp"

#include <QFontDatabase>
#include <QResource>
#include <algorithm>
#include <array>
#include <utility>

namespace velotap {
namespace {

// QML asks a static function for the object; there is one at a time.
ViewContext* gContext = nullptr;

QVariantMap asMap(const Palette& palette) {
  QVariantMap map;
  for (const Palette::Entry& entry : palette.entries) {
    map.insert(QString::fromLatin1(entry.name.data(), static_cast<qsizetype>(entry.name.size())),
               QColor::fromRgba(entry.color));
  }
  return map;
}

// The type lies in the program uncompressed: it is read where it lies, never copied.
int addFont(const QResource& file) {
  const bool asItIs = file.compressionAlgorithm() == QResource::NoCompression;
  return QFontDatabase::addApplicationFontFromData(
      asItIs ? QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), file.size())
             : file.uncompressedData());
}

// The type that the program carries.
QList<int> loadFonts() {
  QList<int> fonts;
  for (const char* weight : {"Regular", "Medium", "SemiBold"}) {
    const QResource file(
        QStringLiteral(":/velotap/fonts/Inter-%1.otf").arg(QString::fromLatin1(weight)));
    if (file.isValid()) fonts.append(addFont(file));
  }
  return fonts;
}

// Where the program was built without, what the desktop reads in.
QString familyToUse() {
  const QString inter = QStringLiteral("Inter");
  return QFontDatabase::hasFamily(inter)
             ? inter
             : QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

}  // namespace

ViewContext::ViewContext(bool still, QObject* parent)
    : QObject(parent),
      palette_(asMap(paletteFor(look_.scheme, look_.highContrast))),
      monoFamily_(QFontDatabase::systemFont(QFontDatabase::FixedFont).family()),
      still_(still) {
  gContext = this;
}

ViewContext::~ViewContext() {
  if (gContext == this) gContext = nullptr;
}

ViewContext* ViewContext::create(QQmlEngine*, QJSEngine*) {
  QQmlEngine::setObjectOwnership(gContext, QQmlEngine::CppOwnership);
  return gContext;
}

void ViewContext::setLook(const Look& look) {
  if (look == look_) return;
  look_ = look;
  look_.textScale = std::clamp(look_.textScale, 0.75, 2.0);
  palette_ = asMap(paletteFor(look_.scheme, look_.highContrast));
  emit lookChanged();
}

QString ViewContext::fontFamily() const {
  if (fontFamily_.isEmpty()) {
    fonts_ = loadFonts();
    fontFamily_ = familyToUse();
  }
  return fontFamily_;
}

void ViewContext::dropFonts() {
  for (const int font : std::exchange(fonts_, {})) QFontDatabase::removeApplicationFont(font);
  fontFamily_.clear();
}

QString ViewContext::hex(const QColor& color) const {
  return color.name(QColor::HexRgb).mid(1);
}

}  // namespace velotap
