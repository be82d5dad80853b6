#include "workbench/cli/scratch_document.h"

namespace tiepoint::workbench::cli {

ScratchDocument::ScratchDocument(Workbench& workbench_)
    : workbench(workbench_),
      former(workbench_.requireActiveDocument().number()),
      own(workbench_.openTemporaryDocument().number()) {}

ScratchDocument::~ScratchDocument() {
  giveBack();
  workbench.closeDocument(own);
}

OdDbDatabasePtr ScratchDocument::database() const { return workbench.requireDocument(own).database(); }

void ScratchDocument::giveBack() const { workbench.activateDocument(former); }

}  // namespace tiepoint::workbench::cli
