#include "transient_service.h"

#include <algorithm>

namespace foreign {

void TransientService::addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) {
  answer("TransientService::addTransient", [&] {
    if (mode != 4 || subMode != 768 || viewGroup != 2 || flags != 0) board.complain("a drawable in another place");
    const Node& node = graphics.attach(*drawable);
    if (std::any_of(shown.begin(), shown.end(), [&](const Shown& entry) { return entry.node == &node; })) {
      board.complain("a drawable was added twice");
    }
    shown.push_back({drawable, &node});
    if (graphics.drawsAtOnce) draw();
  });
}

void TransientService::removeTransient(OdGiDrawable* drawable) {
  letGo("TransientService::removeTransient", [&] {
    if (graphics.drawsAtOnce) draw();
    const auto isMeant = [&](const Shown& entry) { return entry.drawable == drawable && !entry.node->isOver(); };
    shown.erase(std::remove_if(shown.begin(), shown.end(), isMeant), shown.end());
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
  for (const auto& [drawable, node] : shown) {
    if (!node->isOver() && !drawable->worldDraw(nullptr)) drawable->viewportDraw(&canvas);
  }
  graphics.count(drawn);
  return drawn;
}

std::size_t TransientService::size() const {
  return static_cast<std::size_t>(
      std::count_if(shown.begin(), shown.end(), [](const Shown& entry) { return !entry.node->isOver(); }));
}

std::size_t TransientService::forgetGone() {
  const std::size_t before = shown.size();
  shown.erase(std::remove_if(shown.begin(), shown.end(), [](const Shown& entry) { return entry.node->isOver(); }),
              shown.end());
  return before - shown.size();
}

}  // namespace foreign
