#include "workbench/io/durable_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tiepoint::workbench {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

#ifdef _WIN32
FilePtr createNew(const fs::path& path) { return FilePtr(_wfopen(path.c_str(), L"wb")); }
bool flushToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }
/// A rename is on the disk once it returns.
void flushFolder(const fs::path&) {}
#else
FilePtr createNew(const fs::path& path) { return FilePtr(std::fopen(path.c_str(), "wbx")); }
bool flushToDisk(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }
/// Makes the rename last. The file is whole either way, so that a folder that can't be flushed is
/// no failure.
void flushFolder(const fs::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}
#endif

/// A name beside the target that another process doesn't choose at the same time.
fs::path temporaryBeside(const fs::path& target) {
  fs::path name = target;
  name += ".new-" + std::to_string(std::random_device{}());
  return name;
}

/// The file that a chain of symbolic links leads to, so that the rename doesn't replace a link.
fs::path behindLinks(const fs::path& path) {
  std::error_code failure;
  const fs::path resolved = fs::weakly_canonical(path, failure);
  return failure ? path : resolved;
}

void keepPermissions(const fs::path& from, const fs::path& to) {
  std::error_code missing;
  const fs::file_status status = fs::status(from, missing);
  if (fs::is_regular_file(status)) fs::permissions(to, status.permissions());
}

/// A rename would take a device or a pipe away, and leave a file in its place.
void requireOrdinary(const fs::path& target) {
  std::error_code missing;
  const fs::file_status status = fs::status(target, missing);
  if (!fs::exists(status) || fs::is_regular_file(status)) return;
  throw std::system_error(fs::is_directory(status) ? EISDIR : EINVAL, std::generic_category());
}

[[noreturn]] void failWithErrno() { throw std::system_error(errno, std::generic_category()); }

void writeNew(const fs::path& path, const std::string& content) {
  const FilePtr file = createNew(path);
  if (!file) failWithErrno();
  if (std::fwrite(content.data(), 1, content.size(), file.get()) != content.size()) failWithErrno();
  if (!flushToDisk(file.get())) failWithErrno();
}

}  // namespace

void replaceFile(const std::string& path, const std::string& content) {
  const fs::path target = behindLinks(fs::u8path(path));
  const fs::path temporary = temporaryBeside(target);
  try {
    requireOrdinary(target);
    writeNew(temporary, content);
    keepPermissions(target, temporary);
    fs::rename(temporary, target);
  } catch (const std::system_error& error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw std::runtime_error("The file '" + path + "' can't be written: " + error.code().message());
  }
  flushFolder(target.parent_path());
}

}  // namespace tiepoint::workbench
