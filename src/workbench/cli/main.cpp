#include "workbench/cli/command_line.h"
#include "workbench/cli/utf8_console.h"

int main(int argc, char** argv) {
  const tiepoint::workbench::cli::Utf8Console console;
  return static_cast<int>(tiepoint::workbench::cli::runCommandLine(argc, argv));
}
