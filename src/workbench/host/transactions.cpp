#include "workbench/host/transactions.h"

#include <utility>

namespace tiepoint::workbench {

namespace {

void abortAll(const std::vector<OdDbDatabasePtr>& databases) {
  for (const OdDbDatabasePtr& database : databases) {
    if (database->hasActiveTransaction()) database->abortTransaction();
  }
}

}  // namespace

Transactions::Transactions(std::vector<OdDbDatabasePtr> databases) : running(std::move(databases)) {
  try {
    for (const OdDbDatabasePtr& database : running) database->startTransaction();
  } catch (...) {
    abortAll(running);
    throw;
  }
}

Transactions::~Transactions() { abortAll(running); }

void Transactions::commit() {
  for (const OdDbDatabasePtr& database : running) database->endTransaction();
}

}  // namespace tiepoint::workbench
