// Writes a text that a person saves: as a whole or not at all.
//
// Any thread. What was in the file before stays until the whole text is on the disk.
#pragma once

#include <QString>
#include <string>

namespace velotap {

/// False when it could not be written; nothing has changed then.
[[nodiscard]] bool writeTextFile(const QString& path, const std::string& text);

}  // namespace velotap
