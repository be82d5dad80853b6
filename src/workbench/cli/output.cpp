#include "workbench/cli/output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/plain_text.h"

namespace tiepoint::workbench::cli {

void writeOut(const std::string& text) {
  errno = 0;
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (written || errno == EPIPE) return;
  const std::string reason = errno == 0 ? "unknown error" : std::strerror(errno);
  throw CommandError(ExitStatus::file, "standard output can't be written: " + reason + "; the result is lost");
}

void sayError(const std::string& line) { std::fprintf(stderr, "tiepoint: %s\n", printable(line).c_str()); }

void outliveReaders() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
}

void Warnings::add(const std::string& line) {
  lines.push_back(line);
  if (!quiet) sayError("warning: " + line);
}

}  // namespace tiepoint::workbench::cli
