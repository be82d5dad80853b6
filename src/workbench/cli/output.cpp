#include "workbench/cli/output.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "workbench/cli/exit_status.h"
#include "workbench/report/finding_text.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

void forgetWriteErrors() {
  errno = 0;
#ifdef _WIN32
  _doserrno = 0;
#endif
}

bool hasReaderGone() {
#ifdef _WIN32
  // The C library takes a pipe that nobody reads for an invalid argument; the system knows better.
  if (_doserrno == ERROR_NO_DATA || _doserrno == ERROR_BROKEN_PIPE) return true;
#endif
  return errno == EPIPE;
}

void writeOut(const std::string& text) {
  forgetWriteErrors();
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (written || hasReaderGone()) return;
  const std::string reason = errno == 0 ? "unknown error" : std::strerror(errno);
  throw CommandError(ExitStatus::file, "standard output can't be written: " + reason + "; the result is lost");
}

void printError(const std::string& line) { std::fprintf(stderr, "tiepoint: %s\n", printable(line).c_str()); }

void ignoreBrokenPipe() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
}

Findings::Listener printFindings(bool quiet) {
  if (quiet) return {};
  return [](const Finding& finding) { printError("warning: " + findingText(finding)); };
}

}  // namespace tiepoint::workbench::cli
