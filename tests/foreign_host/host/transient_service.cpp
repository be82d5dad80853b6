#include "transient_service.h"

#include <algorithm>

namespace foreign {

void TransientService::addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) {
  answer("TransientService::addTransient", [&] {
    if (mode != 4 || subMode != 768 || viewGroup != 2 || flags != 0) board.complain("a drawable in another place");
    if (std::count(shown.begin(), shown.end(), drawable) != 0) board.complain("a drawable was added twice");
    shown.push_back(drawable);
    graphics.attach(*drawable);
    if (graphics.drawsAtOnce) draw();
  });
}

void TransientService::removeTransient(OdGiDrawable* drawable) {
  letGo("TransientService::removeTransient", [&] {
    if (graphics.drawsAtOnce) draw();
    shown.erase(std::remove(shown.begin(), shown.end(), drawable), shown.end());
  });
}

HostView* TransientService::activeView() {
  return answer("TransientService::activeView", [this]() -> HostView* { return &shownView; });
}

void TransientService::applyView(HostView* view, int flags) {
  answer("TransientService::applyView", [&] {
    if (view != &shownView || flags != 0) board.complain("another view was applied");
  });
}

Drawn TransientService::draw() const {
  Drawn drawn;
  Canvas canvas(shownView, drawn);
  for (const OdGiDrawable* drawable : shown) {
    if (!drawable->worldDraw(nullptr)) drawable->viewportDraw(&canvas);
  }
  graphics.count(drawn);
  return drawn;
}

}  // namespace foreign
