#include "workbench/session/scratch_document.h"

namespace tiepoint::workbench {

namespace {

std::optional<int> activeNumber(Workbench& workbench) {
  if (!workbench.activeDocument()) return std::nullopt;
  return workbench.requireActiveDocument().number();
}

}  // namespace

ScratchDocument::ScratchDocument(Workbench& workbench_)
    : workbench(workbench_), former(activeNumber(workbench_)), own(workbench_.openTemporaryDocument().number()) {}

ScratchDocument::~ScratchDocument() {
  reactivateFormer();
  workbench.closeDocument(own);
}

OdDbDatabasePtr ScratchDocument::database() const { return workbench.requireDocument(own).database(); }

void ScratchDocument::reactivateFormer() const {
  if (former) workbench.activateDocument(*former);
}

}  // namespace tiepoint::workbench
