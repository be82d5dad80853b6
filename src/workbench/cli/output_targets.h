// Which files a command may write.
#pragma once

#include <string>
#include <vector>

#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// A file to be written, and the option that asks for it. UTF-8.
struct OutputTarget {
  std::string option;
  std::string path;
};

/// Throws CommandError(file) when the target's folder isn't there.
void requireFolder(const OutputTarget& target);

/// Throws CommandError(file) when a file of this path is there and may not be replaced: one that the
/// command reads, what isn't an ordinary file, and, unless forced, any.
void requireReplaceable(const RegisterOptions& options, const OutputTarget& target);

/// The same for a file that the command reads, and for nothing else.
void requireNotRead(const RegisterOptions& options, const OutputTarget& target);

/// Throws CommandError(usage) when two of them are one file: the later would replace the earlier.
void requireDifferent(const std::vector<OutputTarget>& targets);

/// The file appears whole or not at all. Throws CommandError(file) when it may not be replaced or can't
/// be written.
void putFile(const RegisterOptions& options, const OutputTarget& target, const std::string& content);

}  // namespace tiepoint::workbench::cli
