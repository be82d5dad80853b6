// How a command ends.
#pragma once

#include <stdexcept>
#include <string>

namespace tiepoint::workbench::cli {

/// The process's exit status.
enum class ExitStatus : int {
  done = 0,
  /// The module refused, or the groups don't hang together.
  refused = 1,
  /// The command line asks for what there isn't.
  usage = 2,
  /// A file or a drawing can't be read, written or locked.
  file = 3
};

/// Ends a command. what() is one line: what is wrong, where, what to do.
class CommandError : public std::runtime_error {
 public:
  CommandError(ExitStatus status, const std::string& message) : std::runtime_error(message), exitStatus(status) {}

  ExitStatus status() const { return exitStatus; }

 private:
  ExitStatus exitStatus;
};

}  // namespace tiepoint::workbench::cli
