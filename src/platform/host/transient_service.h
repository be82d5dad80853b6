// The host's service for transient drawables of one document.
#pragma once

class HostView;
class OdGiDrawable;

class HostTransientService {
 public:
  virtual ~HostTransientService() = default;

  /// Shows a drawable that isn't part of the drawing, until it is removed. The service doesn't own
  /// it. The values place it: drawing mode, sub-mode (a layer's rank), group of views, flags.
  virtual void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) = 0;
  virtual void removeTransient(OdGiDrawable* drawable) = 0;
  /// The document's active view, or null.
  virtual HostView* activeView() = 0;
  /// Shows what was set on the view; `flags` is 0.
  virtual void applyView(HostView* view, int flags) = 0;
};
