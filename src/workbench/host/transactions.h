// One transaction on each of several databases.
#pragma once

#include <vector>

#include "platform/sdk/od_db_database.h"

namespace tiepoint::workbench {

/// Begins a transaction on every database; what isn't committed when the object goes is undone.
class Transactions {
 public:
  explicit Transactions(std::vector<OdDbDatabasePtr> databases);
  ~Transactions();
  Transactions(const Transactions&) = delete;
  Transactions& operator=(const Transactions&) = delete;

  /// Commits one after another. When a store refuses, its database and those after it are undone
  /// and the error goes on. An action changes one drawing, so that this is all or nothing.
  void commit();

 private:
  std::vector<OdDbDatabasePtr> running;
};

}  // namespace tiepoint::workbench
