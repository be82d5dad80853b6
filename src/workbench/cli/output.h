// What a command says: results on standard output, everything else on standard error.
#pragma once

#include <string>
#include <vector>

namespace tiepoint::workbench::cli {

/// Writes all of it to standard output. Throws CommandError(file) when it can't be written, so that
/// no result is lost unnoticed; a reader that has gone away wanted no more and is no error.
void writeOut(const std::string& text);

/// To be called before a write whose failure is to be explained.
void forgetWriteErrors();

/// Whether the last write has failed because nobody reads on the other side any more.
bool hasReaderGone();

/// Writes "tiepoint: " and one line to standard error.
void sayError(const std::string& line);

/// From now on a reader that goes away doesn't end the process in the middle of its work.
void outliveReaders();

/// What the user should know although the command goes on.
class Warnings {
 public:
  explicit Warnings(bool quiet_) : quiet(quiet_) {}

  /// Says it at once, unless told to be quiet, and keeps it.
  void add(const std::string& line);
  const std::vector<std::string>& all() const { return lines; }

 private:
  bool quiet;
  std::vector<std::string> lines;
};

}  // namespace tiepoint::workbench::cli
