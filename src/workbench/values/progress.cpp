#include "workbench/values/progress.h"

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

void step(Progress& progress, std::uint64_t done, std::uint64_t total) {
  if (progress.isCancelled()) throw Refused({RefusalKind::cancelled});
  progress.advance(done, total);
}

}  // namespace tiepoint::workbench
