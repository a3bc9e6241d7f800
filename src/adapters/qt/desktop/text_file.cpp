#include "adapters/qt/desktop/text_file.hpp"

#include <QSaveFile>

namespace velotap {

bool writeTextFile(const QString& path, const std::string& text) {
  QSaveFile file(path);
  const QByteArray bytes = QByteArray::fromStdString(text);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

}  // namespace velotap
