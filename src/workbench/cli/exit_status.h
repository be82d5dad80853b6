// How a command ends.
#pragma once

#include <stdexcept>
#include <string>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench::cli {

/// The process's exit status.
enum class ExitStatus : int {
  done = 0,
  /// The module refused, or the groups aren't connected.
  refused = 1,
  /// The command line is wrong: unknown words, names or values.
  usage = 2,
  /// A file or a drawing can't be read, written or locked.
  file = 3
};

/// How a refusal ends a command.
inline ExitStatus statusOf(RefusalClass refusalClass) {
  switch (refusalClass) {
    case RefusalClass::usage:
      return ExitStatus::usage;
    case RefusalClass::file:
      return ExitStatus::file;
    case RefusalClass::refused:
      break;
  }
  return ExitStatus::refused;
}

/// Ends a command. what() is one line: what is wrong, where, what to do.
class CommandError : public std::runtime_error {
 public:
  CommandError(ExitStatus status, const std::string& message) : std::runtime_error(message), exitStatus(status) {}

  ExitStatus status() const { return exitStatus; }

 private:
  ExitStatus exitStatus;
};

}  // namespace tiepoint::workbench::cli
