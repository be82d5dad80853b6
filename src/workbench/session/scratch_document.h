// A drawing in memory beside the active one.
#pragma once

#include <optional>

#include "workbench/host/workbench.h"

namespace tiepoint::workbench {

/// While it stands, an empty drawing in memory is the active one; afterwards the former is again, if
/// there was one.
class ScratchDocument {
 public:
  explicit ScratchDocument(Workbench& workbench);
  ~ScratchDocument();
  ScratchDocument(const ScratchDocument&) = delete;
  ScratchDocument& operator=(const ScratchDocument&) = delete;

  OdDbDatabasePtr database() const;
  /// Makes the former drawing the active one already; the scratch drawing still stands.
  void reactivateFormer() const;

 private:
  Workbench& workbench;
  std::optional<int> former;
  int own;
};

}  // namespace tiepoint::workbench
