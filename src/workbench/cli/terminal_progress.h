// A sign of life on the terminal.
#pragma once

#include <memory>

#include "workbench/cli/spinner.h"
#include "workbench/values/progress.h"

namespace tiepoint::workbench::cli {

/// Turns a spinner on standard error in every stage, unless told to be quiet.
class TerminalProgress : public Progress {
 public:
  explicit TerminalProgress(bool quiet_) : quiet(quiet_) {}

  void begin(Stage stage) override;
  void end() override { spinner.reset(); }

 private:
  bool quiet;
  std::unique_ptr<Spinner> spinner;
};

}  // namespace tiepoint::workbench::cli
