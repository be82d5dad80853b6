#include "platform/sdk/od_cm_entity_color.h"

namespace {
constexpr unsigned methodShift = 24;
constexpr std::uint32_t valueMask = 0x00FFFFFF;
}  // namespace

void OdCmEntityColor::setColorMethod(ColorMethod method) {
  packed = (packed & valueMask) | (static_cast<std::uint32_t>(method) << methodShift);
}

OdCmEntityColor::ColorMethod OdCmEntityColor::colorMethod() const {
  return static_cast<ColorMethod>(packed >> methodShift);
}
