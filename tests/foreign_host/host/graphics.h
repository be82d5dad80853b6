// The host's graphics system: it hangs a node on every drawable that it meets.
#pragma once

#include <cstddef>
#include <deque>

#include "canvas.h"
#include "platform/sdk/od_gi_drawable.h"
#include "switchboard.h"

namespace foreign {

/// Tells when its drawable is gone.
class Node final : public OdGsCache, public HostObject {
 public:
  explicit Node(Switchboard& switchboard) : HostObject(switchboard, "node") {}
  void setDrawableNull() override;
};

class Graphics {
 public:
  explicit Graphics(Switchboard& switchboard) : board(switchboard) {}

  /// The node on a drawable, which gets one when it has none. It stays there until the drawable is
  /// gone.
  const Node& attach(OdGiDrawable& drawable);
  /// How many nodes haven't been told that their drawable is gone.
  std::size_t attachedNodes() const;
  void clear() { nodes.clear(); }

  /// Notes a draw.
  void count(const Drawn& one);

  /// Draws while a drawable is being added or removed, and at each refresh.
  bool drawsAtOnce = false;
  /// All draws so far.
  std::size_t draws = 0;
  Drawn drawn;

 private:
  Switchboard& board;
  std::deque<Node> nodes;
};

}  // namespace foreign
