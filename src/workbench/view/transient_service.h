// The transient drawables of one document, and the views that show them.
#pragma once

#include <list>
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

  /// A drawable that is shown already keeps its place and takes the new values. Without memory nothing
  /// is shown and nothing hangs on the drawable.
  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override;
  /// Does nothing for a drawable that isn't shown.
  void removeTransient(OdGiDrawable* drawable) override;
  HostView* activeView() override { return active; }
  /// Views are drawn when they are asked for, so that there is nothing to do.
  void applyView(HostView* view, int flags) override;

  /// The document starts with one view, the active one. All show the same drawables, each by its own
  /// camera; the active one is the one that a session zooms.
  const std::list<View>& views() const { return cameras; }
  /// A further view, which isn't active yet. The reference holds until the view is removed.
  View& addView();
  /// Throws std::invalid_argument, as `removeView` does, for a view that isn't this document's.
  void activate(View& view);
  /// The newest of the others becomes active when it was the active one; none is when it was the last.
  void removeView(View& view);
  /// The active view, which there must be.
  View& view() { return *active; }

  /// In the order in which they came.
  const std::vector<TransientEntry>& drawables() const { return entries; }

 private:
  class Node;
  TransientEntry* find(const OdGiDrawable* drawable);
  void forget(const OdGiDrawable* drawable);

  std::list<View>::iterator find(const View& view);

  std::list<View> cameras{1};
  /// Null when there is no view.
  View* active = &cameras.front();
  std::vector<TransientEntry> entries;
  std::map<const OdGiDrawable*, std::shared_ptr<Node>> nodes;
};

}  // namespace tiepoint::workbench
