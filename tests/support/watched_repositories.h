// Repositories whose data a test sees on their way, and can have refused: the program defines setData
// itself, and its definition comes before the library's. Only where programs come before libraries in
// the search for a symbol.
#pragma once

#include <cstddef>
#include <vector>

namespace tiepoint::testing {

/// How a repository stood when it was given its data.
struct DataGiven {
  std::size_t points = 0;
  /// It was an entry of the drawing's dictionary of groups.
  bool wasInDictionary = false;
  /// The dictionary was open for writing.
  bool dictionaryWasRaised = false;
};

struct WatchedRepositories {
  /// What setData gives; with false the data aren't taken.
  bool takeData = true;
  std::vector<DataGiven> given;
};

/// What the program's setData does and notes.
WatchedRepositories& watchedRepositories();

}  // namespace tiepoint::testing
