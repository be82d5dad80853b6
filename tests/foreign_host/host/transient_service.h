// A document's service for drawables that are no part of the drawing.
#pragma once

#include <vector>

#include "canvas.h"
#include "graphics.h"
#include "platform/host/transient_service.h"
#include "platform/sdk/od_gi_drawable.h"
#include "switchboard.h"
#include "view.h"

namespace foreign {

class TransientService final : public HostTransientService, public HostObject {
 public:
  TransientService(Switchboard& switchboard, Graphics& graphicsSystem)
      : HostObject(switchboard, "transient service"), graphics(graphicsSystem), shownView(switchboard) {}

  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override;
  void removeTransient(OdGiDrawable* drawable) override;
  HostView* activeView() override;
  void applyView(HostView* view, int flags) override;

  /// Draws everything that is shown here.
  Drawn draw() const;
  /// How many drawables are shown here.
  std::size_t size() const;
  /// Forgets the drawables that went without having been removed, as their nodes tell; how many.
  std::size_t forgetGone();
  View& view() { return shownView; }

 private:
  struct Shown {
    OdGiDrawable* drawable;
    const Node* node;
  };

  Graphics& graphics;
  View shownView;
  std::vector<Shown> shown;
};

}  // namespace foreign
