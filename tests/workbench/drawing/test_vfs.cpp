#include "workbench/drawing/test_vfs.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <new>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

/// One change of a file: bytes at an offset, or a new length.
struct Change {
  std::int64_t offset = 0;
  std::string bytes;
  std::optional<std::int64_t> newLength;
};

struct FileImage {
  std::string flushed;
  std::vector<Change> pending;
};

struct State {
  sqlite3_vfs vfs{};
  sqlite3_vfs* real = nullptr;
  bool flushesReally = true;
  std::optional<FileFailure> failure;
  bool failed = false;
  int operations = 0;
  std::int64_t written = 0;
  std::map<std::string, FileImage> images;
};

State* current = nullptr;

struct TestFile {
  sqlite3_file base;
  std::string* path;
  sqlite3_file* real;
};

sqlite3_file* realOf(sqlite3_file* file) { return reinterpret_cast<TestFile*>(file)->real; }
FileImage& imageOf(sqlite3_file* file) { return current->images[*reinterpret_cast<TestFile*>(file)->path]; }

void apply(std::string& content, const Change& change) {
  if (change.newLength) {
    content.resize(static_cast<std::size_t>(*change.newLength));
    return;
  }
  const auto end = static_cast<std::size_t>(change.offset) + change.bytes.size();
  if (content.size() < end) content.resize(end);
  content.replace(static_cast<std::size_t>(change.offset), change.bytes.size(), change.bytes);
}

enum class Kind { writing, other };

/// Counts an operation; true when it is to fail.
bool failsNow(Kind kind) {
  ++current->operations;
  if (!current->failure) return false;
  if (kind == Kind::other && current->failure->resultCode == SQLITE_FULL) return false;
  if (current->failure->after-- > 0) return false;
  if (current->failed && !current->failure->lasts) return false;
  current->failed = true;
  return true;
}

/// Runs an operation with the failures that the test has asked for.
template <class Operation>
int run(Kind kind, Operation operation) {
  if (!failsNow(kind)) return operation();
  if (current->failure->takesEffect) operation();
  return current->failure->resultCode;
}

int close(sqlite3_file* file) {
  auto* opened = reinterpret_cast<TestFile*>(file);
  const int result = opened->real->pMethods->xClose(opened->real);
  delete opened->path;
  return result;
}

int read(sqlite3_file* file, void* buffer, int count, sqlite3_int64 offset) {
  return realOf(file)->pMethods->xRead(realOf(file), buffer, count, offset);
}

int write(sqlite3_file* file, const void* buffer, int count, sqlite3_int64 offset) {
  return run(Kind::writing, [&] {
    current->written += count;
    imageOf(file).pending.push_back(
        {offset, std::string(static_cast<const char*>(buffer), static_cast<std::size_t>(count)), {}});
    return realOf(file)->pMethods->xWrite(realOf(file), buffer, count, offset);
  });
}

int truncate(sqlite3_file* file, sqlite3_int64 length) {
  return run(Kind::other, [&] {
    imageOf(file).pending.push_back({0, {}, length});
    return realOf(file)->pMethods->xTruncate(realOf(file), length);
  });
}

int sync(sqlite3_file* file, int flags) {
  return run(Kind::other, [&] {
    FileImage& image = imageOf(file);
    for (const Change& change : image.pending) apply(image.flushed, change);
    image.pending.clear();
    return current->flushesReally ? realOf(file)->pMethods->xSync(realOf(file), flags) : SQLITE_OK;
  });
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) { return realOf(file)->pMethods->xFileSize(realOf(file), size); }
int lock(sqlite3_file* file, int level) { return realOf(file)->pMethods->xLock(realOf(file), level); }
int unlock(sqlite3_file* file, int level) { return realOf(file)->pMethods->xUnlock(realOf(file), level); }
int isReserved(sqlite3_file* file, int* answer) {
  return realOf(file)->pMethods->xCheckReservedLock(realOf(file), answer);
}
int control(sqlite3_file* file, int operation, void* argument) {
  return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}
int sectorSize(sqlite3_file* file) { return realOf(file)->pMethods->xSectorSize(realOf(file)); }

/// Nothing is promised beyond what a plain disk does, so that SQLite takes every precaution.
int characteristics(sqlite3_file*) { return 0; }

const sqlite3_io_methods methods = {
    1,          close,           read,    write,   truncate, sync,    fileSize, lock,   unlock, isReserved, control,
    sectorSize, characteristics, nullptr, nullptr, nullptr,  nullptr, nullptr,  nullptr};

std::string contentOf(const std::string& path) {
  std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  auto* opened = reinterpret_cast<TestFile*>(file);
  opened->base.pMethods = nullptr;
  opened->real = reinterpret_cast<sqlite3_file*>(opened + 1);
  const std::string path = name ? name : "";
  if (!std::filesystem::exists(std::filesystem::u8path(path))) current->images.erase(path);
  // Read before it is opened: closing another open file of it would take its locks away.
  if (current->images.count(path) == 0) current->images[path].flushed = contentOf(path);
  const int result = current->real->xOpen(current->real, name, opened->real, flags, outFlags);
  if (!opened->real->pMethods) return result;
  opened->path = new std::string(path);
  opened->base.pMethods = &methods;
  return result;
}

int remove(sqlite3_vfs*, const char* name, int syncFolder) {
  return run(Kind::other, [&] {
    current->images.erase(name);
    return current->real->xDelete(current->real, name, current->flushesReally ? syncFolder : 0);
  });
}

int access(sqlite3_vfs*, const char* name, int flags, int* answer) {
  return current->real->xAccess(current->real, name, flags, answer);
}

int fullPath(sqlite3_vfs*, const char* name, int size, char* result) {
  return current->real->xFullPathname(current->real, name, size, result);
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const FileFailure& failure) {
  return stream << "code " << failure.resultCode << (failure.lasts ? " for a while" : " once")
                << (failure.takesEffect ? " with effect" : "");
}

TestFileSystem::TestFileSystem(Flush flush) {
  current = new State;
  current->real = sqlite3_vfs_find(nullptr);
  current->flushesReally = flush == Flush::real;
  current->vfs = *current->real;
  current->vfs.zName = "test";
  current->vfs.szOsFile = static_cast<int>(sizeof(TestFile)) + current->real->szOsFile;
  current->vfs.xOpen = open;
  current->vfs.xDelete = remove;
  current->vfs.xAccess = access;
  current->vfs.xFullPathname = fullPath;
  sqlite3_vfs_register(&current->vfs, 1);
}

TestFileSystem::~TestFileSystem() {
  sqlite3_vfs_unregister(&current->vfs);
  sqlite3_vfs_register(current->real, 1);
  delete current;
  current = nullptr;
}

void TestFileSystem::failFromNowOn(const FileFailure& failure) {
  current->failure = failure;
  current->failed = false;
}

void TestFileSystem::stopFailing() { current->failure.reset(); }
bool TestFileSystem::hasFailed() const { return current->failed; }
int TestFileSystem::operationCount() const { return current->operations; }
std::int64_t TestFileSystem::bytesWritten() const { return current->written; }

void TestFileSystem::cutPower(unsigned seed) {
  std::mt19937 random(seed);
  for (auto& [path, image] : current->images) {
    for (const Change& change : image.pending) {
      if (random() % 2 == 0) apply(image.flushed, change);
    }
    image.pending.clear();
    std::ofstream stream(std::filesystem::u8path(path), std::ios::binary | std::ios::trunc);
    stream.write(image.flushed.data(), static_cast<std::streamsize>(image.flushed.size()));
  }
}
