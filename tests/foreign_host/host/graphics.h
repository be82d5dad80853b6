// The host's graphics system: it hangs a node on every drawable that it meets.
#pragma once

#include <cstddef>
#include <deque>

#include "canvas.h"
#include "platform/sdk/od_gi_drawable.h"
#include "switchboard.h"

namespace foreign {

class Graphics {
 public:
  explicit Graphics(Switchboard& switchboard) : board(switchboard) {}

  /// Hangs a node on a drawable that has none. It stays there until the drawable is gone.
  void attach(OdGiDrawable& drawable);
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
  class Node final : public OdGsCache, public HostObject {
   public:
    explicit Node(Switchboard& switchboard) : HostObject(switchboard, "node") {}
    void setDrawableNull() override;
  };

  Switchboard& board;
  std::deque<Node> nodes;
};

}  // namespace foreign
