// What a command says: results on standard output, everything else on standard error.
#pragma once

#include <string>

#include "workbench/values/finding.h"

namespace tiepoint::workbench::cli {

/// Writes all of it to standard output. Throws CommandError(file) when it can't be written, so that
/// no result is lost unnoticed; a reader that has gone away wanted no more and is no error.
void writeOut(const std::string& text);

/// To be called before a write whose failure is to be explained.
void forgetWriteErrors();

/// Whether the last write has failed because nobody reads on the other side any more.
bool hasReaderGone();

/// Writes "tiepoint: " and one line to standard error.
void printError(const std::string& line);

/// From now on a reader that goes away doesn't end the process in the middle of its work.
void ignoreBrokenPipe();

/// Prints findings as they come, unless told to be quiet.
Findings::Listener printFindings(bool quiet);

}  // namespace tiepoint::workbench::cli
