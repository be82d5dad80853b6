// Objects of the host that are counted in the manner of COM.
#pragma once

#include <memory>

namespace ZOR::reg {

/// Gives an object back to the host. One that fails there is the host's own loss: whoever lets go
/// can't do anything about it, and often does so because something else has failed.
struct GiveBack {
  template <class Object>
  void operator()(Object* object) const noexcept {
    try {
      object->release();
    } catch (...) {
    }
  }
};

/// Holds what the host has handed out, and releases it whatever happens meanwhile.
template <class Object>
using Held = std::unique_ptr<Object, GiveBack>;

}  // namespace ZOR::reg
