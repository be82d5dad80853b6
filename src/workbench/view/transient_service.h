// The transient drawables of one document, and its active view.
#pragma once

#include <vector>

#include "platform/host/transient_service.h"
#include "workbench/view/view.h"

namespace tiepoint::workbench {

/// A drawable with the four values that it came with.
struct TransientEntry {
  OdGiDrawable* drawable = nullptr;
  int mode = 0;
  int subMode = 0;
  int viewGroup = 0;
  int flags = 0;
};

class TransientService : public HostTransientService {
 public:
  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override;
  void removeTransient(OdGiDrawable* drawable) override;
  HostView* activeView() override { return &camera; }
  void applyView(HostView* view, int flags) override;

  View& view() { return camera; }
  /// In the order in which they came.
  const std::vector<TransientEntry>& drawables() const { return entries; }

 private:
  View camera;
  std::vector<TransientEntry> entries;
};

}  // namespace tiepoint::workbench
