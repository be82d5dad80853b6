#include "workbench/cli/terminal_progress.h"

#include <cstdio>

namespace tiepoint::workbench::cli {

namespace {

const char* wordsOf(Stage stage) {
  switch (stage) {
    case Stage::naming:
      return "looking for names";
    case Stage::iterating:
      return "registering iteratively";
    case Stage::adjusting:
      return "adjusting";
    case Stage::movingClouds:
      break;
  }
  return "moving clouds";
}

}  // namespace

void TerminalProgress::begin(Stage stage) { spinner = std::make_unique<Spinner>(stderr, wordsOf(stage), quiet); }

}  // namespace tiepoint::workbench::cli
