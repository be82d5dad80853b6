// Replacing a small file as a whole.
#pragma once

#include <string>

namespace tiepoint::workbench {

/// Puts `content` into the file at `path` (UTF-8): written and flushed to the disk under a name of
/// its own in the same folder, then renamed, so that at every moment the file is the old one or the
/// new one. A symbolic link stays one, and the file keeps its permissions. Throws
/// std::runtime_error with one line that names the file, and then leaves it as it was.
void replaceFile(const std::string& path, const std::string& content);

}  // namespace tiepoint::workbench
