#include "workbench/io/durable_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
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

#ifdef _WIN32
std::FILE* createNew(const fs::path& path) { return _wfopen(path.c_str(), L"wb"); }
bool flushToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }
/// A rename is on the disk once it returns.
void flushFolder(const fs::path&) {}
#else
std::FILE* createNew(const fs::path& path) { return std::fopen(path.c_str(), "wbx"); }
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
fs::path resolvingLinks(const fs::path& path) {
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

}  // namespace

WholeFile::WholeFile(const std::string& path)
    : target(resolvingLinks(fs::u8path(path))), temporary(temporaryBeside(target)) {
  requireOrdinary(target);
  file.reset(createNew(temporary));
  if (!file) failWithErrno();
}

WholeFile::~WholeFile() {
  if (temporary.empty()) return;
  file.reset();
  std::error_code ignored;
  fs::remove(temporary, ignored);
}

void WholeFile::write(std::string_view piece) {
  if (std::fwrite(piece.data(), 1, piece.size(), file.get()) != piece.size()) failWithErrno();
}

void WholeFile::putInPlace() {
  if (!flushToDisk(file.get())) failWithErrno();
  file.reset();
  keepPermissions(target, temporary);
  fs::rename(temporary, target);
  temporary.clear();
  flushFolder(target.parent_path());
}

void replaceFile(const std::string& path, const std::string& content) {
  try {
    WholeFile file(path);
    file.write(content);
    file.putInPlace();
  } catch (const std::system_error& error) {
    throw std::runtime_error(path + ": the file can't be written: " + error.code().message());
  }
}

}  // namespace tiepoint::workbench
