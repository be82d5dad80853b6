#include "workbench/cli/command_line.h"

int main(int argc, char** argv) { return static_cast<int>(tiepoint::workbench::cli::runCommandLine(argc, argv)); }
