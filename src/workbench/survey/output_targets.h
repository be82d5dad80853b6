// Which files a registration may write.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/output_file.h"

namespace tiepoint::workbench {

/// What may be replaced.
struct Replacing {
  /// The files that the request reads, UTF-8; those are never replaced.
  std::vector<std::string> inputs;
  bool force = false;
};

/// Throws Refused (noFolder) when the target's folder isn't there.
void requireFolder(const OutputTarget& target);

/// Throws Refused when a file of this path is there and may not be replaced: one that the request reads,
/// what isn't an ordinary file, and, unless forced, any.
void requireReplaceable(const Replacing& replacing, const OutputTarget& target);

/// The same for a file that the request reads, and for nothing else.
void requireNotRead(const Replacing& replacing, const OutputTarget& target);

/// Throws Refused (sameTarget) when two of them are one file: the later would replace the earlier.
void requireDifferent(const std::vector<OutputTarget>& targets);

/// Makes the folder that a field names. Throws Refused (folderNotMade).
void makeFolder(Field field, const std::string& folder);

/// The file appears whole or not at all. Throws Refused when it may not be replaced or can't be written.
void putFile(const Replacing& replacing, const OutputTarget& target, const std::string& content);

}  // namespace tiepoint::workbench
