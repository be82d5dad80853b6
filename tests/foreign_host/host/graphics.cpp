#include "graphics.h"

#include <algorithm>

namespace foreign {

void Graphics::Node::setDrawableNull() {
  letGo("Node::setDrawableNull", [this] { end(); });
}

void Graphics::attach(OdGiDrawable& drawable) {
  if (!drawable.gsNode()) drawable.setGsNode(&nodes.emplace_back(board));
}

void Graphics::count(const Drawn& one) {
  ++draws;
  drawn.lines += one.lines;
  drawn.texts += one.texts;
  drawn.withoutPlace += one.withoutPlace;
  if (one.withoutPlace != 0) board.complain("something was drawn without a place");
}

std::size_t Graphics::attachedNodes() const {
  return static_cast<std::size_t>(
      std::count_if(nodes.begin(), nodes.end(), [](const Node& node) { return !node.isOver(); }));
}

}  // namespace foreign
