// A file system for SQLite that fails when the test says so, and knows what a power cut would leave.
#pragma once

#include <cstdint>
#include <iosfwd>

/// What goes wrong, and when. Operations are the changes of a file: writing, truncating, flushing,
/// deleting. Of these a full disk (SQLITE_FULL) only fails to write.
struct FileFailure {
  /// How many operations go well before.
  int after = 0;
  /// The result code of those that fail.
  int resultCode = 0;
  /// Whether the operations after the first that fails do so as well.
  bool lasts = false;
  /// Whether an operation is carried out although it is reported as failed.
  bool takesEffect = false;
};
std::ostream& operator<<(std::ostream& stream, const FileFailure& failure);

/// While one stands, SQLite opens files through it. One at a time.
class TestFileSystem {
 public:
  enum class Flush { real, none };

  /// Without real flushes tests are quicker; nothing else changes.
  explicit TestFileSystem(Flush flush = Flush::none);
  ~TestFileSystem();
  TestFileSystem(const TestFileSystem&) = delete;
  TestFileSystem& operator=(const TestFileSystem&) = delete;

  void failFromNowOn(const FileFailure& failure);
  void stopFailing();
  /// Whether an operation has failed since failFromNowOn.
  bool hasFailed() const;

  /// Operations, and bytes that they have written, since the object was made.
  int operationCount() const;
  std::int64_t bytesWritten() const;

  /// Sets all files that were opened here to what a power cut leaves: what was flushed, and of what
  /// was written since any part, chosen by `seed`. To be called when all of them are closed.
  void cutPower(unsigned seed);
};
