#include "support/windows_process.h"
#include "workbench/cli/tiepoint_process.h"

ProcessResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup) {
  ProcessResult result;
  if (setup.withoutRights) result.status = notStarted;
  if (!setup.smallDisk.empty()) result.status = noSmallDisk;
  if (result.status != -1) return result;

  const tiepoint::testing::FinishedProcess finished =
      tiepoint::testing::runProcess(program, arguments, setup.input, setup.folder);
  return {finished.started ? finished.status : notStarted, finished.out, finished.err};
}

ProcessResult runTiepoint(const std::vector<std::string>& arguments, const ProcessSetup& setup) {
  return runProgram(TIEPOINT_PROGRAM, arguments, setup);
}
