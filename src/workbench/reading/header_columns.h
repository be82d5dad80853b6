// Columns by the words above them, or by the words that a user names.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "workbench/reading/file_reading.h"

namespace tiepoint::workbench {

enum class ColumnsTrouble {
  /// No word is known.
  unknownWords,
  missingX,
  missingY,
  missingZ,
  /// Two columns claim to be the same.
  doubled,
  /// No column is called a name, and one that isn't known might be it.
  nameUnclear,
  /// A word is none that can be asked for.
  unknownWord,
  /// A column's number isn't one, or two of them are the same.
  badNumber,
  /// The file has no header, or none with that word.
  wordNotInHeader,
};

struct ColumnsFault {
  ColumnsTrouble trouble = ColumnsTrouble::unknownWords;
  /// Those that it is about.
  std::vector<std::string> words;
};

/// What the words of a header, UTF-8, say. Words that mean nothing here are skipped columns.
std::variant<Columns, ColumnsFault> columnsOfHeader(const std::vector<std::string>& words);

/// Columns that a user asks for.
struct ColumnRequest {
  /// In the order of the file; when `places` is empty.
  Columns columns;
  /// Each role with the number of its column, from 1, or the word above it.
  struct Place {
    ColumnRole role = ColumnRole::skipped;
    std::size_t number = 0;
    std::string word;
  };
  std::vector<Place> places;
};

/// From text such as `name,e,n,h`, with `-` or `skip` for a column to be skipped, or such as
/// `name=1,x=3,y=2,z=4` or `x=Easting`, by the number of a column or the word above it. Header words
/// of all languages stand for what they mean.
std::variant<ColumnRequest, ColumnsFault> columnRequestOf(const std::string& text);

/// The columns that are asked for, in a file of that header; `header` is empty without one.
std::variant<Columns, ColumnsFault> requestedColumns(const ColumnRequest& request,
                                                     const std::vector<std::string>& header);

}  // namespace tiepoint::workbench
