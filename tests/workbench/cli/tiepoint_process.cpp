#include "workbench/cli/tiepoint_process.h"

#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr unsigned nobody = 65534;

/// A file without a name, for what passes between the processes.
class PassedText {
 public:
  explicit PassedText(const std::string& text = {}) : file(std::tmpfile()) {
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
  }
  ~PassedText() { std::fclose(file); }
  PassedText(const PassedText&) = delete;
  PassedText& operator=(const PassedText&) = delete;

  int descriptor() const { return fileno(file); }
  std::string text() const {
    std::string all;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) all += static_cast<char>(c);
    return all;
  }

 private:
  std::FILE* file;
};

void limitFiles(unsigned long size) {
  const rlimit limit{size, size};
  setrlimit(RLIMIT_FSIZE, &limit);
  // A write beyond the limit fails then, as on a full disk, instead of ending the process.
  std::signal(SIGXFSZ, SIG_IGN);
}

void mountSmallDisk(const std::string& folder, unsigned long size) {
  const std::string options = "size=" + std::to_string(size) + ",mode=0777";
  if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) != 0) {
    _exit(noSmallDisk);
  }
}

void prepareChild(const ProcessSetup& setup) {
  std::signal(SIGPIPE, SIG_DFL);
  if (!setup.smallDisk.empty()) mountSmallDisk(setup.smallDisk, setup.smallDiskSize);
  if (chdir(setup.folder.c_str()) != 0) _exit(notStarted);
  if (setup.largestFile != 0) limitFiles(setup.largestFile);
  if (setup.withoutRights && geteuid() == 0) {
    if (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0) _exit(notStarted);
  }
}

[[noreturn]] void becomeProgram(const std::string& program, const std::vector<std::string>& arguments) {
  std::vector<char*> pointers{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  execv(program.c_str(), pointers.data());
  _exit(notStarted);
}

int statusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

ProcessResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup) {
  const PassedText input(setup.input);
  const PassedText out;
  const PassedText err;
  const int outFile = setup.outFile.empty() ? -1 : open(setup.outFile.c_str(), O_WRONLY);
  const pid_t child = fork();
  if (child == 0) {
    dup2(input.descriptor(), STDIN_FILENO);
    dup2(outFile >= 0 ? outFile : out.descriptor(), STDOUT_FILENO);
    dup2(err.descriptor(), STDERR_FILENO);
    prepareChild(setup);
    becomeProgram(program, arguments);
  }
  ProcessResult result;
  result.status = statusOf(child);
  if (outFile >= 0) close(outFile);
  result.out = out.text();
  result.err = err.text();
  return result;
}

ProcessResult runTiepoint(const std::vector<std::string>& arguments, const ProcessSetup& setup) {
  return runProgram(TIEPOINT_PROGRAM, arguments, setup);
}
