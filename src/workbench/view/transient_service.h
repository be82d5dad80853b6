// The transient drawables of one document, and its active view.
#pragma once

#include <map>
#include <memory>
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

/// Holds drawables without owning them. One that goes without having been removed tells so through
/// the node that hangs on it, and is then forgotten by every service that shows it.
class TransientService : public HostTransientService {
 public:
  TransientService();
  ~TransientService() override;
  TransientService(const TransientService&) = delete;
  TransientService& operator=(const TransientService&) = delete;

  /// A drawable that is shown already keeps its place and takes the new values.
  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override;
  /// Does nothing for a drawable that isn't shown.
  void removeTransient(OdGiDrawable* drawable) override;
  HostView* activeView() override { return &camera; }
  /// Views are drawn when they are asked for, so that there is nothing to do.
  void applyView(HostView* view, int flags) override;

  View& view() { return camera; }
  /// In the order in which they came.
  const std::vector<TransientEntry>& drawables() const { return entries; }

 private:
  class Node;
  TransientEntry* find(const OdGiDrawable* drawable);
  void forget(const OdGiDrawable* drawable);

  View camera;
  std::vector<TransientEntry> entries;
  std::map<const OdGiDrawable*, std::shared_ptr<Node>> nodes;
};

}  // namespace tiepoint::workbench
