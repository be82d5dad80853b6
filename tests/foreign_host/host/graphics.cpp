#include "graphics.h"

#include <algorithm>

namespace foreign {

void Node::setDrawableNull() {
  letGo("Node::setDrawableNull", [this] { end(); });
}

const Node& Graphics::attach(OdGiDrawable& drawable) {
  const auto known =
      std::find_if(nodes.begin(), nodes.end(), [&](const Node& node) { return &node == drawable.gsNode(); });
  if (known != nodes.end()) return *known;
  Node& node = nodes.emplace_back(board);
  drawable.setGsNode(&node);
  return node;
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
